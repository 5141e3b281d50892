"""Why nothing is measured."""


class Refusal(Exception):
    """Something is missing, failed, or not comparable. The message is one line."""
