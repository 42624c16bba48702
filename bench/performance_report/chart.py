"""The chart: how long each reader takes to load the files, drawn by gnuplot."""

import subprocess
from pathlib import Path

from .readers import LIBRARY, READERS, label
from .samples import Samples, counter, time

PANELS = {"lookup/plain": "Lookup files", "reference/all": "Reference files"}
OWN_COLOUR, OTHER_COLOUR = "0x1f6feb", "0xb6bec9"
# A white background, for dark pages.
PREAMBLE = """
set terminal svg size 980,380 fixed font "Helvetica,Arial,sans-serif,13" background "#ffffff"
set output "{output}"
set multiplot layout 1,2 margins 0.15,0.98,0.19,0.88 spacing 0.165,0
set style fill solid noborder
set border 3 linecolor rgb "#8c959f"
set tics nomirror textcolor rgb "#1f2328"
set ytics scale 0
set xtics scale 0.5
set grid xtics linecolor rgb "#e1e4e8" linetype 1
set xlabel "milliseconds" textcolor rgb "#57606a"
unset key
"""
PANEL = """
set title "{title}" textcolor rgb "#1f2328"
set xrange [0:{end}]
set yrange [{rows} - 0.4:-0.6]
set ytics ({ticks})
$bars << END
{bars}
END
plot $bars using 1:2:(0):1:($2 - 0.36):($2 + 0.36):3 with boxxyerror linecolor rgb variable, \\
     $bars using 1:2:(sprintf("%.1f", $1)) with labels left offset 0.5,0 textcolor rgb "#1f2328"
"""


def write_chart(samples: Samples, output: Path) -> None:
    """Writes no chart when none of the loads was measured, and removes an older one."""
    output.unlink(missing_ok=True)
    panels = [_panel(samples, load, title) for load, title in PANELS.items()]
    drawn = [panel for panel in panels if panel]
    if drawn:
        script = PREAMBLE.format(output=output) + "".join(drawn) + "unset multiplot\n"
        subprocess.run(["gnuplot"], input=script, text=True, check=True)


def _panel(samples: Samples, load: str, title: str) -> str:
    """A bar for each reader, the first one on top; nothing when the load was not measured."""
    times = {
        reader: samples.median(f"first_load/{load}/{reader}", time) for reader in READERS
    }
    bars = [(reader, value / 1_000_000) for reader, value in times.items() if value is not None]
    if not bars:
        return ""
    records = samples.median(f"first_load/{load}/{LIBRARY}", counter("records"))
    return PANEL.format(
        title=f"{title}, first load" + (f" ({records:,.0f} records)" if records else ""),
        end=1.2 * max(value for _, value in bars),
        rows=len(bars),
        ticks=", ".join(f'"{label(reader)}" {row}' for row, (reader, _) in enumerate(bars)),
        bars="\n".join(
            f"{value:.4f} {row} {OWN_COLOUR if reader == LIBRARY else OTHER_COLOUR}"
            for row, (reader, value) in enumerate(bars)
        ),
    )
