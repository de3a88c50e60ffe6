"""The exceptions of the module."""


class HostError(Exception):
    """The host refused a call, and is as it was before.

    call: what was called, such as "Shape.Cells".
    object: what it was called on, as a user would name it.
    reason: why it was refused.
    """

    def __init__(self, call: str, object: str, reason: str) -> None:
        super().__init__(call, object, reason)
        self.call = call
        self.object = object
        self.reason = reason

    def __str__(self) -> str:
        return f"{self.call} on {self.object}: {self.reason}"


class Unanswered(Exception):
    """Something was asked that no handler answered: forms were closed, questions got their most careful answer.

    texts: all that was asked during the outermost call, in order.
    """

    def __init__(self, texts: tuple[str, ...]) -> None:
        super().__init__(*texts)
        self.texts = tuple(texts)

    def __str__(self) -> str:
        return "\n".join(self.texts)
