"""Work on several objects, a step each, so that a progress bar can move and a user can stop it."""


class Work:
    """A list of things to do. `step()` does the next one; `outcome()` is asked once, at the end."""

    def __init__(self, items):
        self._items = list(items)
        self.done = 0
        self.stopped_by = ""  # why the rest is not done, as a clause for the user

    @property
    def total(self):
        return len(self._items)

    @property
    def is_done(self):
        return self.done >= self.total

    def step(self):
        item = self._items[self.done]
        self.done += 1
        self.do(item)

    def stop(self, why):
        self.stopped_by = why

    def do(self, item):
        raise NotImplementedError

    def give_up(self):
        """The end without an outcome: nothing half done stays."""

    def outcome(self):
        """(level, sentence): INFO when all went well, WARNING when something is to be known, ERROR
        when nothing was done. Also where it was stopped."""
        raise NotImplementedError


def shown(text):
    """The text as Blender can hold it: names and labels are UTF-8 there, and paths any bytes."""
    return text.encode("utf-8", "surrogateescape").decode("utf-8", "replace")


def counted(number, noun):
    return f"{number} {noun}" if number == 1 else f"{number} {noun}s"


def listed(words):
    *most, last = words
    return f"{', '.join(most)} and {last}" if most else last


def sentence(*clauses):
    """One sentence of the clauses that are not empty."""
    first, *others = [clause.rstrip(".") for clause in clauses if clause]
    return "; ".join([first] + [_uncapitalised(clause) for clause in others]) + "."


def _uncapitalised(clause):
    return clause if clause[1:2].isupper() else clause[0].lower() + clause[1:]
