"""The exported routines of the library and the shared message record, by their own names.

Each routine takes its arguments in the order of the C header, without the hidden lengths of texts: they
are added here. Single values and texts are plain Python values. Arrays, and whatever a routine writes
to, are objects with an address: numpy arrays, arrays or numbers of ctypes, or `Address`. What they hold
and how large they have to be stands in the C header, and is not checked.

Most callers want `nivaro_morphology.Morphology` instead. This module needs the standard library alone.
"""
# The routines of this module are declarations without a body.
# mypy: disable-error-code="empty-body"

from __future__ import annotations

import ctypes
import functools
import os
import typing
from typing import Annotated, Any, Callable, TypeVar, Union

Address = ctypes.c_void_p

# Objects with an address. None is the null pointer.
Memory = Any

# Kinds of arguments, each with its type in C. A text has a hidden length behind all other arguments.
Real = Annotated[Union[float, Memory], "const double*"]
RealOut = Annotated[Memory, "double*"]
Single = Annotated[Union[float, Memory], "const float*"]
Integer = Annotated[Union[int, Memory], "const int32_t*"]
IntegerOut = Annotated[Memory, "int32_t*"]
Long = Annotated[Union[int, Memory], "const int64_t*"]
Logical = Annotated[Union[bool, Memory], "const nivaro_logical*"]
Text = Annotated[Union[str, bytes], "const char*"]
EndedText = Annotated[Union[str, bytes], "const char* without length"]
TextBuffer = Annotated["ctypes.Array[ctypes.c_char]", "char*"]
Unused = Annotated[None, "const void*"]

_SINGLE_VALUES: dict[str, Callable[[Any], Any]] = {
    "const double*": ctypes.c_double,
    "const float*": ctypes.c_float,
    "const int32_t*": ctypes.c_int32,
    "const int64_t*": ctypes.c_int64,
    "const nivaro_logical*": lambda true: ctypes.c_int32(-1 if true else 0),
}
# Elements of arrays, as numpy names their types.
_ELEMENTS = {
    "double": "f8",
    "float": "f4",
    "int32_t": "i4",
    "int64_t": "i8",
    "nivaro_logical": "i4",
}
_RESULTS: dict[str, Any] = {"None": None, "float": ctypes.c_double, "int": ctypes.c_int32}
_RESULTS |= {"bool": ctypes.c_int32, "str": None, "c_void_p": Address}

Declaration = TypeVar("Declaration", bound=Callable[..., Any])


def text_buffer(text: Union[str, bytes], length: int) -> ctypes.Array[ctypes.c_char]:
    """A text in a buffer of a given length, padded with blanks, for routines that change it."""
    return (ctypes.c_char * length).from_buffer_copy(_encoded(text).ljust(length)[:length])


def text_of(buffer: Union[bytes, ctypes.Array[ctypes.c_char]]) -> str:
    """What a text holds, without the blanks and codes of 0 behind it."""
    return os.fsdecode(bytes(buffer).rstrip(b" \0"))


class MessageRecord(ctypes.Structure):
    """The shared block DMESSAGES. Texts are padded with blanks; `text_of` takes them off."""

    # fmt: off
    _fields_ = [
        ("log_unit", ctypes.c_int32),
        ("line1", ctypes.c_char * 10000),
        ("line2", ctypes.c_char * 10000),
        ("line3", ctypes.c_char * 10000),
        ("line4", ctypes.c_char * 10000),
        ("location_tag", ctypes.c_char * 8),
        ("label_box_width", ctypes.c_double),
        ("label_height", ctypes.c_double),
        ("error_count", ctypes.c_int32),
        ("warning_count", ctypes.c_int32),
        ("check_count", ctypes.c_int32),
        ("located_error_count", ctypes.c_int32),
        ("located_warning_count", ctypes.c_int32),
        ("located_check_count", ctypes.c_int32),
        ("message_number", ctypes.c_int32),
        ("message_level", ctypes.c_int32),
        ("detail1", ctypes.c_char * 10000),
        ("detail2", ctypes.c_char * 10000),
        ("detail3", ctypes.c_char * 10000),
        ("message_table_unit", ctypes.c_int32),
        ("last_x", ctypes.c_double),
        ("last_y", ctypes.c_double),
        ("one_line_flag", ctypes.c_int32),
        ("message_layer", ctypes.c_int32),
        ("secondary_message_layer", ctypes.c_int32),
        ("reference_link", ctypes.c_char * 64),
        ("default_x", ctypes.c_double),
        ("default_y", ctypes.c_double),
        ("unlocated_spacing", ctypes.c_double),
        ("unlocated_count", ctypes.c_int32),
        ("strict_command_flag", ctypes.c_int32),
        ("echo_flag", ctypes.c_int32),
        ("suppression_flag", ctypes.c_int32),
    ]
    # fmt: on


class Signature(typing.NamedTuple):
    """What is passed to a routine: the type in C of each argument by its name, and its result."""

    arguments: dict[str, str]
    result: str  # None, float, int, bool, str or c_void_p


@functools.lru_cache(maxsize=None)
def signature(routine: str) -> Signature:
    """The signature of a routine, from its declaration in `Library`."""
    hints = typing.get_type_hints(getattr(Library, routine), include_extras=True)
    result = hints.pop("return")
    hints.pop("length", None)  # of a text that is returned
    arguments = {name: str(hint.__metadata__[0]) for name, hint in hints.items()}
    return Signature(arguments, "None" if result is type(None) else str(result.__name__))


def routines() -> list[str]:
    """The names of all routines."""
    return [name for name in vars(Library) if name.isupper()]


def _routine(declaration: Declaration) -> Declaration:
    """Makes a method that calls the routine of this name out of its declaration."""

    @functools.wraps(declaration)
    def call(self: Library, *args: Any, **named: Any) -> Any:
        if named:
            import inspect  # slow to load, and seldom needed

            bound = inspect.signature(declaration).bind(self, *args, **named)
            args, named = bound.args[1:], bound.kwargs
        return self.prepared(declaration.__name__, args, **named)()

    return typing.cast(Declaration, call)


def _encoded(text: Union[str, bytes]) -> bytes:
    return text if isinstance(text, bytes) else os.fsencode(text)


def _pointer(value: Any, c_type: str, name: str) -> Any:
    """What ctypes passes for an argument, which keeps the memory that it points to."""
    if value is None:
        return value
    if isinstance(value, Address):
        # ctypes passes references faster than addresses.
        return ctypes.byref(ctypes.c_char.from_address(value.value or 0))
    if isinstance(value, (bool, int, float)) and c_type in _SINGLE_VALUES:
        return ctypes.byref(_SINGLE_VALUES[c_type](value))
    if hasattr(value, "ctypes"):  # of numpy
        if (
            value.dtype != _ELEMENTS[c_type.removeprefix("const ").rstrip("*")]
            or not value.flags.forc
        ):
            raise TypeError(f"{name}: an array in one piece of {c_type.rstrip('*')} is wanted")
        return value.ctypes.data_as(Address)
    if isinstance(value, (ctypes.Array, ctypes.Structure, ctypes._SimpleCData)):
        return ctypes.byref(value)
    raise TypeError(f"{name}: {type(value).__name__} is no {c_type.replace('*', ' *')}")


class Library:
    """The loaded library, with a method for each exported routine.

    Parameters
    ----------
    path : str
        The library's file, or its name for the system's loader.

    Attributes
    ----------
    DMESSAGES : MessageRecord
        The message record that library and host share.
    """

    def __init__(self, path: Union[str, os.PathLike[str]]) -> None:
        self._functions = ctypes.CDLL(os.fspath(path))
        self.DMESSAGES = MessageRecord.in_dll(self._functions, "DMESSAGES")

    def prepared(
        self, routine: str, args: typing.Sequence[Any], length: int = 1000
    ) -> Callable[[], Any]:
        """A routine together with its arguments, to be called many times at little cost.

        Parameters
        ----------
        routine : str
            Name of the routine.
        args : sequence
            Its arguments. Memory that they name by address has to outlive the result.
        length : int
            Longest text that a routine returns.

        Returns
        -------
        callable
            Calls the routine and returns what it returns.
        """
        arguments, result = signature(routine)
        if len(args) != len(arguments):
            raise TypeError(f"{routine} takes {len(arguments)} arguments, not {len(args)}")
        passed: list[Any] = []
        lengths: list[Any] = []
        for value, (name, c_type) in zip(args, arguments.items()):
            if c_type.startswith("const char*"):
                text = _encoded(value)
                passed.append(ctypes.c_char_p(text))
                if c_type == "const char*":
                    lengths.append(ctypes.c_int64(len(text)))
            elif c_type == "char*":
                passed.append(value)
                lengths.append(ctypes.c_int64(len(value)))
            else:
                passed.append(_pointer(value, c_type, name))
        function = self._functions[routine]
        function.restype = _RESULTS[result]
        if result == "bool":
            return lambda: bool(function(*passed, *lengths) & 1)
        if result != "str":
            return functools.partial(function, *passed, *lengths)
        buffer = text_buffer("", length)

        def returned_text() -> str:
            function(buffer, ctypes.c_int64(length), *passed, *lengths)
            return text_of(buffer)

        return returned_text

    # Morphology entry points

    @_routine
    def QVMOR_INITIALISE_S1(
        self,
        simulation_name: Text,
        output_prefix: Text,
        log_prefix: Text,
        save_date_check: Logical,
        table_extension: Text,
        save_date_error: Logical,
        check_layer_prefix: Text,
        check_layer_header_source: Text,
        host_projection: Text,
        projection_error: Logical,
    ) -> None:
        """Start-up, the first call of all: opens the log (`log_prefix`.mlf), the MapInfo workspace
        (`output_prefix`_mor.wor) and the bed change dataset (`output_prefix`_morDH.dat), replacing
        files of these names and making missing folders, and keeps the settings of layers.
        """

    @_routine
    def QVMOR_INITIALISE_S2(
        self,
        time_code_switch: Integer,
        flag_depth_threshold: Real,
        unused3: Integer,
        unused4: Integer,
        num_data: Integer,
        num_cells: Integer,
    ) -> None:
        """Settings of the bed change dataset, kept for the output calls."""

    @_routine
    def QVMOR_SETUP_S2(
        self,
        active: Logical,
        domain: Integer,
        n: Integer,
        m: Integer,
        unused5: Integer,
        unused6: Integer,
        next_real_position: IntegerOut,
        next_integer_position: IntegerOut,
    ) -> None:
        """Reserves the fields of a domain in the host's work arrays: twelve stretches of reals and
        one of integers, of n * m elements each, or of one element where morphology is not active.
        """

    @_routine
    def QVMOR_RDINPF(
        self,
        control_file: Text,
        domain: Integer,
        last_domain: Integer,
        n: Integer,
        m: Integer,
        first_row_bound: Integer,
        second_row_bound: Integer,
        first_object_bound: Integer,
        second_object_bound: Integer,
        first_row_offset: Integer,
        second_row_offset: Integer,
        dx: Real,
        dy: Real,
        angle: Real,
        x0: Real,
        y0: Real,
        real_work: RealOut,
        integer_work: IntegerOut,
        unused19: Unused,
        unused20: Unused,
        unused21: Unused,
    ) -> None:
        """Reads the morphology control file (.mcf) of a domain, after setting its options and cells
        to their defaults.
        """

    @_routine
    def QVMOR_INIT_2D_DOMAIN(self, domain: Integer) -> None:
        """Makes the options of a domain the current ones, which the next steps take."""

    @_routine
    def QVMORPHOLOGY(
        self,
        smoothing_flag: Logical,
        initialisation_flag: Logical,
        skip_flag: Logical,
        wet_flags: Logical,
        flow_flags: Logical,
        water_level: Real,
        v2: Real,
        v1: Real,
        zpts: RealOut,
        zc: RealOut,
        z2: RealOut,
        z1: RealOut,
        n: Integer,
        m: Integer,
        first_i: Integer,
        first_j: Integer,
        last_i: Integer,
        last_j: Integer,
        cell_size: Real,
        slump_distance2: Real,
        slump_distance1: Real,
        unused22: Unused,
        time_step: Real,
        raise_switch: Logical,
        raise_factor: Real,
        unused26: Unused,
        unused27: Unused,
        unused28: Unused,
        unused29: Unused,
        unused30: Unused,
        unused31: Unused,
        unused32: Unused,
        real_work: RealOut,
        integer_work: IntegerOut,
        unused35: Unused,
        unused36: Unused,
        unused37: Unused,
        domain: Integer,
    ) -> None:
        """One morphology call for one domain, with the options made current before."""

    # Bed change dataset

    @_routine
    def QVMOR_WRSMSF_WRITE_HEADER(self, name: EndedText) -> None:
        """The dataset's header, once, before the first time record."""

    @_routine
    def QVMOR_WRSMSF_DAT_FLAGS(
        self,
        domain: Integer,
        last_domain: Integer,
        time: Real,
        time_offset: Real,
        skipped_code: Integer,
        cell_code: Integer,
        cell_active: Logical,
        depth_term1: Real,
        depth_term2: Real,
        nx: Integer,
        unused11: Unused,
        first_i: Integer,
        first_j: Integer,
        last_i: Integer,
        last_j: Integer,
    ) -> None:
        """Cell flags of one domain at an output time."""

    @_routine
    def QVMOR_WRSMSF_DAT_RESULTS(
        self,
        domain: Integer,
        last_domain: Integer,
        point_counts: Integer,
        unused4: Unused,
        write_values: Logical,
        nx: Integer,
        unused7: Unused,
        first_i: Integer,
        first_j: Integer,
        last_i: Integer,
        last_j: Integer,
        point_i: Integer,
        point_j: Integer,
        unused14: Unused,
        real_work: RealOut,
    ) -> None:
        """Bed change of the latest step at the mesh points of one domain, after the flags of all
        domains.
        """

    @_routine
    def QVMOR_WRSMSF_CLOSE(self) -> None:
        """The dataset's end card, once, after the last time record."""

    # Check layer

    @_routine
    def QVMOR_WRMIFF(
        self,
        domain: Integer,
        last_domain: Integer,
        write_values: Logical,
        cell_code: Integer,
        depth: Real,
        nx: Integer,
        unused7: Unused,
        first_i: Integer,
        first_j: Integer,
        last_i: Integer,
        last_j: Integer,
        first_offset: Integer,
        second_offset: Integer,
        x0: Real,
        y0: Real,
        step_a: Real,
        step_b: Real,
        real_work: RealOut,
        integer_work: IntegerOut,
    ) -> None:
        """The cells of one domain, each as a square with its indices, code, bed elevation and the
        six parameters read for it, in `check_layer_prefix`_mor_check.mif and .mid.
        """

    # Messages

    @_routine
    def DMESSAGEXY(self, blank_lines: Integer, x: Real, y: Real) -> None:
        """Writes the message held in DMESSAGES with a place on the map, counts it, and clears the
        record.
        """

    @_routine
    def DMESSAGESADDRESS(self) -> Address:
        """The address of the record, for a host whose compiler cannot import data of a library."""

    @_routine
    def DMESSAGE(self, blank_lines: Integer) -> None:
        """Writes the message held in DMESSAGES without a place, counts it, and clears the record."""

    @_routine
    def DMESSAGECLEAR(self) -> None:
        """Clears lines, details, tag, link, last place and one-line flag."""

    @_routine
    def DMESSAGERESETCOUNTERS(self) -> None:
        """Sets the six counters of messages to 0."""

    @_routine
    def DLINE(self, unit: Integer) -> None:
        """An empty line and a rule of 80 underscores on the screen."""

    # Control lines

    @_routine
    def READLINE(self, unit: Integer, line: TextBuffer) -> bool:
        """Reads the next line of a unit, takes out its tabs, leading blanks and comment, and
        replaces its variables.
        """

    @_routine
    def COMMENTLINE(self, line: TextBuffer) -> bool:
        """Takes off leading blanks and everything from the first "!" or `#` on, and replaces
        variables: `<<name>>` by the value of that name, where any are defined.
        """

    @_routine
    def EOFLINEREAD(self, unit: Integer, buffer: TextBuffer) -> bool:
        """Reads one item of the next record and skips the rest of the record."""

    @_routine
    def COMMANDLINE(self, line: TextBuffer, value: TextBuffer, command: TextBuffer) -> bool:
        """Splits a line at its first "=="."""

    @_routine
    def CHECKLINE(
        self,
        line: Text,
        flag: Text,
        separator: Text,
        column: Integer,
        value: TextBuffer,
        command: TextBuffer,
    ) -> bool:
        """Splits a line at a separator of any kind or, where that is blank or missing, behind a
        column.
        """

    @_routine
    def FLAGEXISTS(self, text: Text, flag: Text) -> bool:
        """Whether a text contains a flag."""

    @_routine
    def FLAGEXISTSRET(self, text: Text, flag: Text, rest: TextBuffer) -> bool:
        """As FLAGEXISTS, with what follows the flag."""

    @_routine
    def ASAME(self, a: Text, b: Text) -> bool:
        """Whether two texts are the same but for letter case, quotes, tabs and blanks around."""

    @_routine
    def ASAMECS(self, a: Text, b: Text) -> bool:
        """As ASAME, but letter case counts."""

    @_routine
    def READGIS(self, command: Text, keyword: Text) -> bool:
        """Whether a command contains "Read MI " or "Read GIS " with the keyword right behind."""

    @_routine
    def WRITEGIS(self, command: Text, keyword: Text) -> bool:
        """Whether a command contains "Write MI " or "Write GIS " with the keyword right behind."""

    @_routine
    def READROWCOL(self, command: Text, keyword: Text) -> bool:
        """Whether a command contains "Read MID " or "Read RowCol " with the keyword right behind."""

    @_routine
    def READGISANY(self, command: Text) -> bool:
        """Whether a command contains "Read MI" or "Read GIS"."""

    @_routine
    def READROWCOLANY(self, command: Text) -> bool:
        """Whether a command contains "Read MID" or "Read RowCol"."""

    @_routine
    def NUMBERLINE(self, line: TextBuffer) -> bool:
        """Takes off the leading blanks of a line and looks whether a number may follow."""

    @_routine
    def POSITIVEINTEGERNUMBER(self, text: TextBuffer) -> bool:
        """Takes off the leading blanks of a text and looks whether it is all digits."""

    @_routine
    def REMOVEQUOTES(self, text: Text, *, length: int = 1000) -> str:
        """The text without single and double quotes."""

    @_routine
    def REMOVESPACES(self, text: Text, *, length: int = 1000) -> str:
        """The text without any blank."""

    # Values from texts

    @_routine
    def EXTRACTINTEGER(
        self, line: Text, lowered_line: Text, key: Text, column: Integer, default_value: Integer
    ) -> int:
        """An item of the list behind a key and "="."""

    @_routine
    def EXTRACTREAL(
        self, line: Text, lowered_line: Text, key: Text, column: Integer, default_value: Real
    ) -> float:
        """As EXTRACTINTEGER, for a real."""

    @_routine
    def EXTRACTSTRING(
        self, line: Text, lowered_line: Text, key: Text, column: Integer, *, length: int = 1000
    ) -> str:
        """As EXTRACTINTEGER, for a text: without quotes and without blanks around, blank where
        there is no item.
        """

    @_routine
    def EXTRACTSTRINGREM(
        self, line: Text, lowered_line: Text, key: Text, column: Integer, *, length: int = 1000
    ) -> str:
        """As EXTRACTSTRING, but behind a key the result is all that follows "=", commas included."""

    @_routine
    def CSVCOLUMN(self, header: Text, name: Text, column: IntegerOut) -> bool:
        """Position of a named field in the header line of a table, compared as by ASAME."""

    @_routine
    def CSVVALUE(self, line: Text, column: Integer, value: RealOut) -> int:
        """Real value of a field."""

    @_routine
    def NUMBEROFSUBSTRINGS(self, text: TextBuffer, separator: Text) -> int:
        """Takes the tabs out of a text and counts its pieces between separators."""

    @_routine
    def SUBSTRING(self, text: Text, separator: Text, index: Integer, *, length: int = 1000) -> str:
        """A piece of a text between separators, without blanks around; blank where there are fewer."""

    @_routine
    def NUMBEROFNUMBERS(self, line: Text) -> int:
        """Counts the numbers of a line before its comment, an empty one between two commas
        included.
        """

    @_routine
    def NUMBEROFDAYS(self, date: Text) -> int:
        """Number of a day in a calendar of 365-day years, 1 on 1 January 2000."""

    @_routine
    def CHECKREAL(self, text: Text, value: RealOut) -> bool:
        """Whether a text reads as a real."""

    @_routine
    def CHECKINT4(self, text: Text, value: IntegerOut) -> bool:
        """Whether a text reads as a 4-byte integer."""

    # Numbers to texts

    @_routine
    def AINTEGER(self, value: Integer, *, length: int = 1000) -> str:
        """The digits of an integer, behind a minus sign where it is negative."""

    @_routine
    def AINTEGER8(self, value: Long, *, length: int = 1000) -> str:
        """As AINTEGER, of an 8-byte integer."""

    @_routine
    def AINTEGERPREC0(self, value: Integer, digits: Integer, *, length: int = 1000) -> str:
        """As AINTEGER, with zeros in front of a value of 0 or more: 305 in 4 digits is "0305"."""

    @_routine
    def AINTEGER8PREC0(self, value: Long, digits: Integer, *, length: int = 1000) -> str:
        """As AINTEGERPREC0, of an 8-byte integer."""

    @_routine
    def AREAL(self, value: Real, *, length: int = 1000) -> str:
        """A real with six decimals below 0.01, one less for each power of ten, none from 1000 on;
        trailing zeros go, the point stays: "0.25", "3.".
        """

    @_routine
    def AREAL8(self, value: Real, *, length: int = 1000) -> str:
        """As AREAL, with ten decimals below 1 and none from 1e9 on."""

    @_routine
    def AREALD(self, value: Real, decimals: Integer, *, length: int = 1000) -> str:
        """A real with a given number of decimals; none leaves the point."""

    @_routine
    def AREALD4(self, value: Single, decimals: Integer, *, length: int = 1000) -> str:
        """As AREALD, of a 4-byte real."""

    @_routine
    def AREALD8(self, value: Real, decimals: Integer, *, length: int = 1000) -> str:
        """The same as AREALD."""

    @_routine
    def AREALDPREC0(
        self, value: Real, decimals: Integer, width: Integer, *, length: int = 1000
    ) -> str:
        """As AREALD, with zeros in front of a value of 0 or more."""

    # Text transformations

    @_routine
    def TRIMF(self, text: Text, *, length: int = 1000) -> str:
        """The text without its leading blanks."""

    @_routine
    def UPPERCASE(self, text: Text, *, length: int = 1000) -> str:
        """The text in upper case."""

    @_routine
    def LOWERCASE(self, text: Text, *, length: int = 1000) -> str:
        """The text in lower case."""

    @_routine
    def DOUBLEQUOTE(self, text: Text, *, length: int = 1000) -> str:
        """The text with every double quote doubled, for quoted fields."""

    @_routine
    def SPACETOUNDERSCORE(self, text: Text, *, length: int = 1000) -> str:
        """The text with "_" for every blank but the trailing ones; "Blank" for a blank text."""

    @_routine
    def ALPHANUMERICONLY(self, text: Text, replacement: Text, *, length: int = 1000) -> str:
        """The text with everything but letters and digits replaced; "X" where nothing is left."""

    @_routine
    def CLEANATTRIBUTENAME(self, text: Text, *, length: int = 1000) -> str:
        """Letters, digits and "_" of the text, as column names want them; "X" where there are none."""

    @_routine
    def BLANK(self, text: TextBuffer) -> bool:
        """Takes the tabs out of a text."""

    @_routine
    def SS256(self, text: Text, *, length: int = 1000) -> str:
        """The first 256 characters of a text."""

    @_routine
    def LENSL(self, text: TextBuffer) -> int:
        """Length of a text without trailing blanks and codes of 0."""

    @_routine
    def REPLACE(self, text: Text, old_text: Text, new_text: Text, *, length: int = 1000) -> str:
        """Replaces the first occurrence of a text, in any letter case."""

    @_routine
    def REPLACEALL(self, text: Text, old_text: Text, new_text: Text, *, length: int = 1000) -> str:
        """As REPLACE, for every occurrence."""

    # Geometry

    @_routine
    def DISTANCE(self, x1: Real, y1: Real, x2: Real, y2: Real) -> float:
        """Distance of two points; 0 when they are closer than 1e-6 along both axes."""

    @_routine
    def DISTANCE_8(self, x1: Real, y1: Real, x2: Real, y2: Real) -> float:
        """The same as `DISTANCE`."""

    @_routine
    def VECTOR_MAGNITUDE(self, u: Real, v: Real) -> float:
        """Length of a vector; 0 when neither component exceeds 1e-6."""

    @_routine
    def CIRCLE_WIDTH(self, radius: Real, depth: Real) -> float:
        """Width of the water surface in a circular section; 0 when it is empty or full within 1e-5."""

    @_routine
    def SAME_POINT(self, x1: Real, y1: Real, x2: Real, y2: Real, tolerance: Real) -> bool:
        """Whether two points are closer than a tolerance along both axes."""

    @_routine
    def SAME_POINT_8(self, x1: Real, y1: Real, x2: Real, y2: Real, tolerance: Real) -> bool:
        """The same as `SAME_POINT`."""

    @_routine
    def SAME_SIDE(
        self, x1: Real, y1: Real, x2: Real, y2: Real, x3: Real, y3: Real, x4: Real, y4: Real
    ) -> float:
        """Whether points 3 and 4 lie on the same side of the line through 1 and 2."""

    @_routine
    def SAME_SIDE_8(
        self, x1: Real, y1: Real, x2: Real, y2: Real, x3: Real, y3: Real, x4: Real, y4: Real
    ) -> float:
        """The same as `SAME_SIDE`."""

    @_routine
    def POINT_POSITION_8(self, x1: Real, y1: Real, x2: Real, y2: Real, x3: Real, y3: Real) -> int:
        """On which side of a directed line a point lies."""

    @_routine
    def INTERSECT_POINT(self, x1: Real, y1: Real, x2: Real, y2: Real, x3: Real, y3: Real) -> bool:
        """Whether a point lies exactly on a line."""

    @_routine
    def INTERSECT_LINE(
        self, x1: Real, y1: Real, x2: Real, y2: Real, x3: Real, y3: Real, x4: Real, y4: Real
    ) -> bool:
        """Whether two segments meet."""

    @_routine
    def INTERSECT_LINE_8(
        self, x1: Real, y1: Real, x2: Real, y2: Real, x3: Real, y3: Real, x4: Real, y4: Real
    ) -> bool:
        """The same as `INTERSECT_LINE`."""

    @_routine
    def INTERSECT_LINE_V2(
        self, x1: Real, y1: Real, x2: Real, y2: Real, x3: Real, y3: Real, x4: Real, y4: Real
    ) -> int:
        """On which of two segments the crossing of their lines lies."""

    @_routine
    def INTERSECT_LINE_V2_8(
        self, x1: Real, y1: Real, x2: Real, y2: Real, x3: Real, y3: Real, x4: Real, y4: Real
    ) -> int:
        """The same as `INTERSECT_LINE_V2`."""

    @_routine
    def INTERSECTION_POINT(
        self,
        x1: Real,
        y1: Real,
        x2: Real,
        y2: Real,
        x3: Real,
        y3: Real,
        x4: Real,
        y4: Real,
        xi: RealOut,
        yi: RealOut,
    ) -> bool:
        """The crossing of two lines, which have no ends."""

    @_routine
    def INTERSECTION_POINT_8(
        self,
        x1: Real,
        y1: Real,
        x2: Real,
        y2: Real,
        x3: Real,
        y3: Real,
        x4: Real,
        y4: Real,
        xi: RealOut,
        yi: RealOut,
    ) -> bool:
        """The same as `INTERSECTION_POINT`."""

    @_routine
    def ANGLE2D(
        self, x1: Real, y1: Real, x2: Real, y2: Real, x3: Real, y3: Real, x4: Real, y4: Real
    ) -> float:
        """Angle between two directed lines, 0 to 180 degrees."""

    @_routine
    def GEO_SHIFT(
        self,
        x: Real,
        y: Real,
        count: Integer,
        x0: Real,
        y0: Real,
        angle: Real,
        shifted_x: RealOut,
        shifted_y: RealOut,
    ) -> None:
        """Points in the frame of a grid: with (dx, dy) from the origin to a point, the result is
        (dx cos + dy sin, dy cos - dx sin).
        """

    @_routine
    def INSIDE_POLYGON(
        self,
        px: Real,
        py: Real,
        x: Real,
        y: Real,
        vertex_count: Integer,
        min_x: Real,
        polygon_ends: Integer,
        polygon_count: Integer,
    ) -> bool:
        """Whether a point lies inside an odd number of polygons."""

    @_routine
    def INSIDE_POLYGON_8(
        self,
        px: Real,
        py: Real,
        x: Real,
        y: Real,
        vertex_count: Integer,
        min_x: Real,
        polygon_ends: Integer,
        polygon_count: Integer,
    ) -> bool:
        """The same as `INSIDE_POLYGON`."""

    @_routine
    def INTERPOLATE_TRIANGLE(
        self, px: Real, py: Real, x: Real, y: Real, z: Real, result: RealOut
    ) -> bool:
        """Linear interpolation of values at the corners of a triangle."""

    @_routine
    def INTERPOLATE_TRIANGLE_8(
        self, px: Real, py: Real, x: Real, y: Real, z: Real, result: RealOut
    ) -> bool:
        """The same as `INTERPOLATE_TRIANGLE`."""

    @_routine
    def INTERPOLATE_TRIANGLE_NO_CHECKS(
        self, px: Real, py: Real, x: Real, y: Real, z: Real, result: RealOut
    ) -> None:
        """As INTERPOLATE_TRIANGLE, for a point that is known to lie in a proper triangle."""

    @_routine
    def INTERPOLATE_ELEMENT_8(
        self,
        px: Real,
        py: Real,
        x: Real,
        y: Real,
        z: Real,
        vertex_count: Integer,
        min_x: Real,
        result: RealOut,
    ) -> bool:
        """Interpolation in an element of 3 or 4 corners; of 4, the mean over the triangles that
        contain the point.
        """

    @_routine
    def HYD_PARAM(
        self,
        x1: Real,
        z1: Real,
        x2: Real,
        z2: Real,
        level: Real,
        is_used: Integer,
        area: RealOut,
        width: RealOut,
        perimeter: RealOut,
    ) -> None:
        """Wet geometry of a straight piece of bed under a water level; dry pieces give 0."""

    @_routine
    def HYD_PARAM2(
        self,
        x1: Real,
        z1: Real,
        is_first_used: Integer,
        x2: Real,
        z2: Real,
        is_second_used: Integer,
        level: Real,
        area1: RealOut,
        area2: RealOut,
        width1: RealOut,
        width2: RealOut,
        perimeter1: RealOut,
        perimeter2: RealOut,
    ) -> None:
        """As HYD_PARAM, for the two halves of a piece."""

    @_routine
    def SET_SUB_GRID_AREA(
        self,
        x: Real,
        y: Real,
        count: Integer,
        cell_size: Real,
        first_bound: Integer,
        second_bound: Integer,
        first_low: IntegerOut,
        second_low: IntegerOut,
        first_high: IntegerOut,
        second_high: IntegerOut,
        min_x: RealOut,
        min_y: RealOut,
        max_x: RealOut,
        max_y: RealOut,
    ) -> None:
        """The cells that points may touch, and the box around the points."""

    # Paths

    @_routine
    def FILEEXT(self, path: Text, *, length: int = 1000) -> str:
        """The extension with its point, in lower case."""

    @_routine
    def FILEEXTKC(self, path: Text, *, length: int = 1000) -> str:
        """As FILEEXT, with its letter case kept."""

    @_routine
    def FILE___EXT(self, path: Text, *, length: int = 1000) -> str:
        """The tail with its underscore, in lower case: "_h" of "M01_5m_H.dat"."""

    @_routine
    def FILENAME(self, path: Text, *, length: int = 1000) -> str:
        """The name without folder and extension."""

    @_routine
    def FILENAMEEXT(self, path: Text, *, length: int = 1000) -> str:
        """The name with its extension."""

    @_routine
    def FILENAMENO_(self, path: Text, *, length: int = 1000) -> str:
        """The name without folder, extension and tail."""

    @_routine
    def FILENAMEPATH(self, path: Text, *, length: int = 1000) -> str:
        """The path without its extension; a path that is nothing else stays whole."""

    @_routine
    def FILENAMEPATHNO_(self, path: Text, *, length: int = 1000) -> str:
        """As FILENAMEPATH, without the tail too."""

    @_routine
    def FILEFOLDERPATH(self, path: Text, *, length: int = 1000) -> str:
        """The folder with its last separator."""

    @_routine
    def DOSPATH(self, path: Text, *, length: int = 1000) -> str:
        """The path with backslashes for slashes."""

    @_routine
    def CORRECTSLASH(self, path: Text, *, length: int = 1000) -> str:
        """The path without leading blanks, as shown on the console."""

    @_routine
    def CLEANPATH(self, path: TextBuffer, *, length: int = 1000) -> str:
        """The path without leading blanks, each doubled separator made one."""

    @_routine
    def REMOVEDOTDOT(self, path: Text, *, length: int = 1000) -> str:
        """The path with backslashes only, without doubled ones behind its start, and with
        references to parent and current folder resolved where the text alone allows it.
        """

    @_routine
    def ADDFOLDER(self, folder: Text, file: Text, *, length: int = 1000) -> str:
        """A file in a folder, tidied as by REMOVEDOTDOT."""

    @_routine
    def CHANGEDRIVE(self, path: TextBuffer, drive: Text) -> None:
        """Another drive letter for a path that has one."""

    # The end of a run

    @_routine
    def EXITS(self) -> None:
        """Closes layers and files, waits for Enter, and ends the process with exit code 1; before
        start-up it does not wait and the code is 0.
        """
