"""Reads the public header: groups, exported routines with their arguments and what the comments say
of each, and the fields of the message record. What else states the interface is made from this.

    header = read_header(path)
    for routine in header.routines: ...
"""
import pathlib
import re
from dataclasses import dataclass, field, replace

# A comment, and the declaration behind it where there is one.
BLOCK = re.compile(
    r"/\*\*(?!<)((?:(?!\*/).)*)\*/\s*"
    r"(?:NIVARO_API (\w+\*?) ([A-Z][A-Z0-9_]*)\(([^)]*)\) NIVARO_NOEXCEPT;)?",
    re.S,
)
GROUP = re.compile(r" \\defgroup \w+ (.*?)\n(.*)@\{", re.S)
VARIABLE = re.compile(r"^extern NIVARO_API \w+ ([A-Z]+);", re.M)
RECORD = re.compile(r"typedef struct \w+ \{(.*?)\n\}", re.S)
FIELD = re.compile(r"(\w+) (\w+)(?:\[(\d+)\])?;\s*/\*\*< (.*?) \*/", re.S)


@dataclass(frozen=True)
class Argument:
    name: str
    type: str  # int32_t, int64_t, double, float, char, void, nivaro_logical, nivaro_length
    direction: str = "in"  # in, out or in,out
    extents: str = ""  # of an array, or of the longest result: "n, m", "nx, *", "3"
    comment: str = ""
    length: str = ""  # of a text: the name of its hidden length

    @property
    def is_unused(self) -> bool:
        return self.name.startswith("unused")

    @property
    def is_length(self) -> bool:
        return self.type == "nivaro_length"


@dataclass(frozen=True)
class Group:
    title: str
    comment: list[str]


@dataclass(frozen=True)
class Routine:
    name: str
    group: Group
    result: str  # void, int32_t, double, nivaro_logical, nivaro_messages*
    arguments: list[Argument]  # in the order of the call, hidden lengths too
    comment: list[str]  # paragraphs; one that begins with "- " is an item of a list
    returns: str = ""
    note: str = ""
    same_as: str = ""

    @property
    def returns_text(self) -> bool:
        return bool(self.arguments) and self.arguments[0].length == "result_length"


@dataclass(frozen=True)
class Field:
    name: str
    type: str
    size: int  # 0: a single value
    comment: str


@dataclass
class Header:
    routines: list[Routine] = field(default_factory=list)
    variables: list[str] = field(default_factory=list)
    fields: list[Field] = field(default_factory=list)

    @property
    def names(self) -> list[str]:
        return self.variables + [routine.name for routine in self.routines]


def paragraphs(comment: str) -> list[str]:
    """A new one begins behind an empty line, at a command of Doxygen and at an item of a list."""
    found = [""]
    for line in comment.splitlines():
        line = re.sub(r"^ \*", "", line).strip()
        if not line or line.startswith(("\\", "- ")):
            found.append("")
        found[-1] = f"{found[-1]} {line}".strip()
    return [paragraph for paragraph in found if paragraph]


def described_arguments(comment: list[str]) -> dict[str, Argument]:
    """What \\param says of each name; its type is not known here."""
    found = {}
    for paragraph in comment:
        match = re.match(r"\\param\[([a-z,]+)\] (\w+(?:, \w+)*) +(?:\[(.*?)\] ?)?(.*)", paragraph)
        if match:
            direction, names, extents, text = match.groups()
            for name in names.split(", "):
                found[name] = Argument(name, "", direction, extents or "", text)
    return found


def declared_arguments(routine: str, code: str, described: dict[str, Argument]) -> list[Argument]:
    arguments = []
    for constant, type_name, address, name in re.findall(r"(const )?\b(\w+)(\*?) (\w+)", code):
        if name not in described:
            raise ValueError(f"{routine}: \\param says nothing of {name}")
        argument = replace(described[name], type=type_name)
        if not argument.is_length and (
            not address or bool(constant) != (argument.direction == "in")
        ):
            raise ValueError(f"{routine}: {name} is not \\param[{argument.direction}]")
        arguments.append(argument)
    for name in described.keys() - {argument.name for argument in arguments}:
        raise ValueError(f"{routine}: there is no argument {name}")

    # Texts and hidden lengths stand in the same order; one text of a fixed size has none.
    lengths = [argument.name for argument in arguments if argument.is_length]
    texts = [argument.name for argument in arguments if argument.type == "char"] if lengths else []
    if len(texts) != len(lengths):
        raise ValueError(f"{routine}: {len(texts)} texts and {len(lengths)} hidden lengths")
    length_of = dict(zip(texts, lengths))
    return [replace(argument, length=length_of.get(argument.name, "")) for argument in arguments]


def text_behind(command: str, comment: list[str]) -> str:
    return next((p.removeprefix(command).strip() for p in comment if p.startswith(command)), "")


def read_routine(name: str, result: str, code: str, comment: list[str], group: Group) -> Routine:
    return Routine(
        name=name,
        group=group,
        result=result,
        arguments=declared_arguments(name, code, described_arguments(comment)),
        comment=[paragraph for paragraph in comment if not paragraph.startswith("\\")],
        returns=text_behind("\\return", comment),
        note=text_behind("\\note", comment),
    )


def read_header(path: pathlib.Path) -> Header:
    code = path.read_text(encoding="utf-8")
    header = Header(variables=VARIABLE.findall(code))
    record = "".join(RECORD.findall(code))
    for type_name, name, size, text in FIELD.findall(record):
        header.fields.append(Field(name, type_name, int(size or 0), " ".join(text.split())))
    if len(header.fields) != re.sub(r"/\*.*?\*/", "", record, flags=re.S).count(";"):
        raise ValueError("a field of the record lacks its comment behind")

    group = Group("", [])
    comments: dict[str, list[str]] = {}
    for text, result, name, arguments in BLOCK.findall(code):
        comment = paragraphs(text)
        if name:
            original = text_behind("\\copydoc", comment)
            comments[name] = comments[original] if original else comment
            routine = read_routine(name, result, arguments, comments[name], group)
            header.routines.append(replace(routine, same_as=original))
        elif opening := GROUP.match(text):
            group = Group(opening[1], paragraphs(opening[2]))
    if len(header.routines) != len(re.findall(r"^NIVARO_API ", code, re.M)):
        raise ValueError("a routine lacks its comment in front or NIVARO_NOEXCEPT behind")
    return header
