"""The one kind of failure of this package."""


class VekError(Exception):
    """Something could not be done. Its text is one sentence that a user can be shown."""
