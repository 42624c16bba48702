"""The error that ends a run with a message for the user."""


class CorpusError(Exception):
    pass
