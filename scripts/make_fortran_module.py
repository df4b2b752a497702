#!/usr/bin/env python3
"""Makes the Fortran module from the public header and a template. The template has what only Fortran
needs; in place of its lines "!@ record", "!@ plain", "!@ exported" and "!@ wrappers" come the fields
of the message record, the routines that Fortran calls as they are, the exported forms of all others,
and for each of these a wrapper that takes ordinary texts and logicals.

Usage: make_fortran_module.py HEADER TEMPLATE MODULE
"""
import itertools
import pathlib
import re
import sys
import textwrap
from collections.abc import Iterable, Iterator

from public_header import Argument, Field, Header, Routine, read_header

COLUMNS = 100
TYPES = {
    "int32_t": "integer(c_int32_t)",
    "int64_t": "integer(c_int64_t)",
    "double": "real(c_double)",
    "float": "real(c_float)",
    "char": "character(kind=c_char)",
    "nivaro_logical": "integer(c_int32_t)",
    "nivaro_messages*": "type(c_ptr)",
}
INTENTS = {"in": "intent(in)", "out": "intent(out)", "in,out": "intent(inout)"}

# A blank at which no line ends.
GLUE = "\N{NO-BREAK SPACE}"

# What a wrapper does before its call: start-up lets the module's pointer point to the record.
BEFORE = {"QVMOR_INITIALISE_S1": "call find_dmessages()"}


def wrapped(text: str, indent: str, following: str, end: str = "") -> list[str]:
    lines = textwrap.wrap(
        text,
        COLUMNS - len(end),
        initial_indent=indent,
        subsequent_indent=following,
        break_long_words=False,
        break_on_hyphens=False,
    )
    lines = [line.replace(GLUE, " ") for line in lines]
    return [line + end for line in lines[:-1]] + lines[-1:]


def statement(text: str, depth: int) -> list[str]:
    return wrapped(text, "  " * depth, "  " * (depth + 2), " &")


# ---- Comments ------------------------------------------------------------------------------------


def heading(title: str, depth: int) -> str:
    return f"{'  ' * depth}! ---- {title} ".ljust(COLUMNS, "-")


def described(routine: Routine) -> list[tuple[str, str]]:
    """Names of arguments that Fortran passes, and what the header says of them together."""
    together: dict[str, list[str]] = {}
    for argument in dummies(routine):
        brackets = f"[{argument.extents}] " if argument.extents else ""
        together.setdefault(brackets + argument.comment, []).append(argument.name)
    return [(", ".join(names), comment) for comment, names in together.items()]


def table(rows: list[tuple[str, str]], indent: str) -> list[str]:
    """Names and texts in two columns; a text begins on a line of its own behind many names."""
    width = max((len(names) for names, _ in rows if len(names) <= 24), default=8)
    lines = []
    for names, text in rows:
        column = f"{indent}  {names.ljust(width)}  "
        if len(names) > width:
            lines.append(f"{indent}  {names}")
            column = f"{indent}  {' ' * width}  "
        lines += wrapped(text, column, indent + " " * (width + 4))
    return lines


def reference(routine: Routine, depth: int) -> list[str]:
    """The header's comment."""
    indent = "  " * depth + "! "
    if routine.same_as:
        return [f"{indent}The same as {routine.same_as.lower()}."]
    lines = []
    for paragraph in routine.comment:
        item = paragraph.startswith("- ")
        lines += wrapped(paragraph, indent + "  " * item, indent + "    " * item)
    lines += table(described(routine), indent)
    if routine.returns:
        lines += wrapped(f"Returns: {routine.returns}.", indent, indent)
    if routine.note:
        lines += wrapped(routine.note, indent, indent)
    return lines


# ---- Declarations --------------------------------------------------------------------------------


def dummies(routine: Routine) -> list[Argument]:
    """What a Fortran host passes: not the hidden lengths, the result and what is not used."""
    arguments = routine.arguments[2:] if routine.returns_text else routine.arguments
    return [a for a in arguments if not (a.is_length or a.is_unused)]


def array(name: str, extents: str) -> str:
    return f"{name}({extents.replace(' ', GLUE)})" if extents else name


def exported_form(argument: Argument) -> tuple[str, str]:
    """Type with attributes, and name with extents, as the library takes an argument."""
    if argument.is_length:
        return "integer(c_int64_t), value", argument.name
    if argument.type == "void" or (argument.type == "nivaro_logical" and argument.extents):
        return "type(c_ptr), value", argument.name
    extents = "*" if argument.length else argument.extents
    return f"{TYPES[argument.type]}, {INTENTS[argument.direction]}", array(argument.name, extents)


def natural_form(argument: Argument) -> tuple[str, str]:
    """The same for a wrapper."""
    intent = INTENTS[argument.direction]
    if argument.type == "char":
        return f"character(*), {intent}", argument.name
    if argument.type == "nivaro_logical" and argument.extents:
        name = array(argument.name, argument.extents)
        return f"logical(nivaro_logical), {intent}, target", name
    if argument.type == "nivaro_logical":
        return f"logical, {intent}", argument.name
    return exported_form(argument)


def has_fixed_size(argument: Argument) -> bool:
    """A text without a hidden length, which a wrapper copies to a variable of its size."""
    return argument.type == "char" and not argument.length


def passed(argument: Argument, routine: Routine) -> str:
    """The actual argument with which a wrapper calls the exported form."""
    if routine.returns_text and argument is routine.arguments[0]:
        return "outcome"
    if argument.is_length:
        text = next(a.name for a in routine.arguments if a.length == argument.name)
        text = "outcome" if routine.returns_text and text == "result" else text
        return f"len({text},{GLUE}c_int64_t)"
    if argument.is_unused:
        return "c_null_ptr" if argument.type == "void" else "0_c_int32_t"
    if argument.type == "nivaro_logical":
        return f"c_loc({argument.name})" if argument.extents else f"as_word({argument.name})"
    return f"padded_{argument.name}" if has_fixed_size(argument) else argument.name


def declarations(forms: Iterable[tuple[str, str]], depth: int) -> list[str]:
    """One for each type: scalars before the arrays whose extents they are, integers first."""
    names: dict[str, list[str]] = {"integer(c_int32_t), intent(in)": []}
    for kind, name in forms:
        names.setdefault(kind, []).append(name)
    lines = []
    for kind, of_kind in names.items():
        if of_kind:
            of_kind.sort(key=lambda name: "(" in name)
            lines += statement(f"{kind} :: {', '.join(of_kind)}", depth)
    return lines


# ---- Routines ------------------------------------------------------------------------------------


def is_plain(routine: Routine) -> bool:
    """Nothing in it looks different in Fortran."""
    strange = {"char", "void", "nivaro_logical"}
    return routine.result != "nivaro_logical" and not any(
        argument.type in strange or argument.is_unused for argument in routine.arguments
    )


def procedure(
    name: str, arguments: Iterable[str], is_function: bool, suffix: str, depth: int
) -> list[str]:
    result = " result(outcome)" if is_function else ""
    kind = "function" if is_function else "subroutine"
    return statement(f"{kind} {name}({', '.join(arguments)}){result}{suffix}", depth)


def exported(routine: Routine, prefix: str) -> list[str]:
    is_function = routine.result != "void"
    lines = procedure(
        prefix + routine.name.lower(),
        [argument.name for argument in routine.arguments],
        is_function,
        f" bind(C,{GLUE}name='{routine.name}')",
        2,
    )
    lines += ["      import"]
    lines += declarations(map(exported_form, routine.arguments), 3)
    if is_function:
        lines.append(f"      {TYPES[routine.result]} :: outcome")
    return lines + [f"    end {'function' if is_function else 'subroutine'}"]


def result_of(routine: Routine) -> str:
    if not routine.returns_text:
        return "logical" if routine.result == "nivaro_logical" else TYPES[routine.result]
    length = routine.arguments[0].extents
    for argument in dummies(routine):
        if argument.length:
            length = re.sub(rf"\b{argument.length}\b", f"len({argument.name})", length)
    return f"character({length})"


def wrapper(routine: Routine) -> list[str]:
    is_function = routine.returns_text or routine.result != "void"
    mine = dummies(routine)
    lines = procedure(routine.name.lower(), [a.name for a in mine], is_function, "", 1)
    lines += declarations(map(natural_form, mine), 2)
    if is_function:
        lines.append(f"    {result_of(routine)} :: outcome")
    padded = [a for a in mine if has_fixed_size(a)]
    lines += [f"    character({a.extents}) :: padded_{a.name}" for a in padded]
    lines += [f"    padded_{a.name} = {a.name}" for a in padded]
    if routine.name in BEFORE:
        lines.append(f"    {BEFORE[routine.name]}")

    actual = ", ".join(passed(argument, routine) for argument in routine.arguments)
    call = f"abi_{routine.name.lower()}({actual})"
    if routine.result == "void":
        lines += statement(f"call {call}", 2)
    elif routine.result == "nivaro_logical":
        lines += statement(f"outcome = is_true({call})", 2)
    else:
        lines += statement(f"outcome = {call}", 2)
    return lines + [f"  end {'function' if is_function else 'subroutine'}"]


# ---- Parts of the module -------------------------------------------------------------------------


def record(fields: Iterable[Field]) -> list[str]:
    lines = []
    for one in fields:
        size = f"({one.size})" if one.size else ""
        declared = f"    {TYPES[one.type]} :: {one.name}{size}"
        line = f"{declared} ! {one.comment}"
        lines += [line] if len(line) <= COLUMNS else [f"    ! {one.comment}", declared]
    return lines


def by_group(routines: list[Routine], depth: int) -> Iterator[tuple[list[str], Routine]]:
    """Each routine with the lines that stand in front of it: empty ones, and its group's."""
    indent = "  " * depth + "! "
    for group, members in itertools.groupby(routines, lambda routine: routine.group):
        opening = ["", heading(group.title, depth)]
        for paragraph in group.comment:
            opening += wrapped(paragraph, indent, indent)
        for routine in members:
            yield [*opening, ""], routine
            opening = []


def as_fortran_writes(names: re.Pattern[str], line: str) -> str:
    """Names of routines in comments are in lower case."""
    while (lowered := names.sub(lambda found: found[1] + found[2].lower(), line)) != line:
        line = lowered
    return line


def parts(header: Header) -> dict[str, list[str]]:
    plain = [routine for routine in header.routines if is_plain(routine)]
    strange = [routine for routine in header.routines if not is_plain(routine)]
    made: dict[str, list[str]] = {"record": record(header.fields), "plain": [], "wrappers": []}
    for opening, routine in by_group(plain, 2):
        made["plain"] += [*opening, *reference(routine, 2), *exported(routine, "")]
    for opening, routine in by_group(strange, 1):
        made["wrappers"] += [*opening, *reference(routine, 1), *wrapper(routine)]
    made["exported"] = [line for routine in strange for line in exported(routine, "abi_")]
    names = re.compile(rf"(! .*?)\b({'|'.join(header.names)})\b")
    return {part: [as_fortran_writes(names, line) for line in made[part]] for part in made}


def main() -> None:
    header, template, module = map(pathlib.Path, sys.argv[1:])
    try:
        made = parts(read_header(header))
    except ValueError as fault:
        sys.exit(f"{header}: {fault}")
    lines: list[str] = []
    for line in template.read_text(encoding="utf-8").splitlines():
        part = line.strip().removeprefix("!@ ")
        lines += made[part] if line.strip().startswith("!@ ") else [line]
    text = "\n".join(lines) + "\n"
    # Left alone where it is the same, so that no host is compiled again.
    if not module.exists() or module.read_text(encoding="utf-8") != text:
        module.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
