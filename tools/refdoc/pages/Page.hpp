#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "refdoc/text/TextLayout.hpp"

namespace refdoc {

enum class Style { Plain, Bold, Underline };

struct Span {
    std::u16string text;
    Style style;
};

using StyledText = std::vector<Span>;

/// The width of a page that never breaks lines.
inline constexpr std::size_t kUnlimitedWidth = std::size_t{1} << 31;

struct PageFormat {
    std::size_t width;
    bool styled; ///< whether bold and underlined text can be shown
};

/// Lays out text like a manual page. Any text is safe: control sequences never reach the terminal.
class Page {
public:
    static constexpr std::size_t kSubsectionIndent = 3;
    static constexpr std::size_t kBodyIndent = 7;

    explicit Page(PageFormat format);

    /// A header or footer line. If the parts do not fit beside each other, each distinct part gets
    /// a line of its own.
    void marginLine(std::u16string_view left, std::u16string_view centre,
                    std::u16string_view right);

    /// A title with one empty line before it and none after it.
    void section(std::u16string_view title);
    void subsection(std::u16string_view title);

    /// A paragraph whose lines after the first are indented by `hang` more columns.
    void paragraph(const StyledText& text, std::size_t indent, std::size_t hang = 0);
    void paragraph(std::u16string_view text, std::size_t indent);

    /// A line of syntax in bold. Continuation lines are aligned with the first argument.
    void syntaxLine(std::u16string_view line, std::size_t indent);

    /// A line that is never broken; only its tabs are expanded.
    void verbatim(std::u16string_view line, std::size_t indent);
    void verbatim(const StyledText& line, std::size_t indent);

    /// A tag at `indent`; the text that follows at `indent + hang` begins on the same line if there
    /// is room.
    void tag(const StyledText& tag, std::size_t indent, std::size_t hang);

    /// Puts one empty line between the content so far, unless that is a title, and what follows.
    void separate();

    /// The page in UTF-8.
    std::string take();

private:
    struct PendingTag {
        StyledText text;
        std::size_t indent;
        std::size_t width;
    };

    void heading(std::u16string_view title, std::size_t indent);
    std::size_t roomAfter(std::size_t indent) const;
    void addLines(const StyledText& text, const std::vector<TextRange>& lines, std::size_t indent,
                  std::size_t hang);
    void addLine(const StyledText& line, std::size_t indent);
    void addSpan(const Span& span);
    void flushTag();

    PageFormat format_;
    LineBreaker lineBreaker_;
    std::string text_;
    std::optional<PendingTag> pendingTag_;
    bool separated_ = false;
    bool afterHeading_ = false;
};

} // namespace refdoc
