"""The exceptions of the module."""


class HostError(Exception):
    """The host refused a call, and nothing changed.

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
    """No handler answered a question or form: forms were closed, questions got the answer that changes least.

    texts: all that was asked during the outermost call, in order.
    """

    def __init__(self, texts: tuple[str, ...]) -> None:
        super().__init__(*texts)
        self.texts = tuple(texts)

    def __str__(self) -> str:
        return "\n".join(self.texts)
