"""Documentation roots made from manual pages."""
