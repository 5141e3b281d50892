"""The error that ends a measurement."""


class Refusal(Exception):
    """Something is missing, failed, or not comparable. The message is one line."""
