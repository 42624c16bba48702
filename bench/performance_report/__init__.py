"""The page and the chart about performance."""
