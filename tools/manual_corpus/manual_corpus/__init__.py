"""Documentation data roots made from manual pages."""
