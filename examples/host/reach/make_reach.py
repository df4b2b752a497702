#!/usr/bin/env python3
"""Makes the bed and the layers of the case: bed.asc, the MIF/MID pairs and the table of the pit.

The river is described along the grid, x downstream and y to the left, and put on the map with the
place and the angle of case.toml. Run it in this folder after a change; what it writes is kept.
"""
from math import atan, cos, exp, pi, radians, sin

COLUMNS, ROWS, CELL = 200, 100, 10.0
MAP_X, MAP_Y, ANGLE = 431260.0, 5703480.0, radians(28.0)
COORD_SYS = 'CoordSys Earth Projection 8, 104, "m", 9, 0, 0.9996, 500000, 0'

SLOPE = 0.00022      # of the valley
BANK = 6.0           # from bed to bank, m
ISLAND = (1110.0, 5.0, 130.0, 34.0)   # along x, left of the centre line, half length, half width
PIT = (290.0, 450.0, -35.0, 45.0)      # x from, to; left of the centre line from, to
PIT_DEPTH = 1.3
SILL_X, SILL_HEIGHT = 1850.0, 0.7
PIPE_X = 840.0


def smooth(t):
    t = min(max(t, 0.0), 1.0)
    return t * t * (3 - 2 * t)


def bump(x, centre, width):
    return exp(-(((x - centre) / width) ** 2))


def centre_line(x):
    """A bend to the right, straight on under the bridge, and a bend to the left."""
    return 620.0 - 190.0 * smooth((x - 40.0) / 560.0) + 170.0 * smooth((x - 1260.0) / 540.0)


def direction(x):
    return atan((centre_line(x + 1.0) - centre_line(x - 1.0)) / 2.0)


def half_width(x):
    """Narrow between the abutments of a bridge, wide beside the island."""
    return 150.0 - 48.0 * bump(x, 700.0, 85.0) + 50.0 * bump(x, 1110.0, 200.0)


def from_centre(x, y):
    """Distance left of the centre line, across the flow."""
    return (y - centre_line(x)) * cos(direction(x))


def floor(x):
    return 20.0 - SLOPE * x


def bed(x, y):
    d = from_centre(x, y)
    z = floor(x) + BANK * smooth((abs(d) / half_width(x) - 0.55) / 0.6)
    # The island stands 2 m above the flood.
    at, left, half_length, half_wide = ISLAND
    r = (((x - at) / half_length) ** 2 + ((d - left) / half_wide) ** 2) ** 0.5
    z = max(z, floor(x) + BANK * smooth((1.75 - r) / 1.2))
    z += SILL_HEIGHT * smooth(1.6 - abs(x - SILL_X) / 50.0)
    x1, x2, d1, d2 = PIT
    inside = smooth((x - x1) / 50.0) * smooth((x2 - x) / 50.0)
    inside *= smooth((d - d1) / 25.0) * smooth((d2 - d) / 25.0)
    return z - PIT_DEPTH * inside


def along(x, left):
    """The point of the grid at x on the centre line, moved to the left across the flow."""
    a = direction(x)
    return x - left * sin(a), centre_line(x) + left * cos(a)


def at(x, left):
    """The point of the grid at x whose distance from the centre line is `left`."""
    return x, centre_line(x) + left / cos(direction(x))


def on_map(point):
    x, y = point
    return MAP_X + x * cos(ANGLE) - y * sin(ANGLE), MAP_Y + x * sin(ANGLE) + y * cos(ANGLE)


def strip(x1, x2, left1, left2):
    """Along the river between two distances from its centre line."""
    count = max(2, round((x2 - x1) / 20.0))
    xs = [x1 + (x2 - x1) * k / count for k in range(count + 1)]
    return [at(x, left1(x)) for x in xs] + [at(x, left2(x)) for x in reversed(xs)]


def ellipse(factor):
    x, left, half_length, half_wide = ISLAND
    turns = [2 * pi * k / 36 for k in range(36)]
    return [at(x + factor * half_length * cos(t), left + factor * half_wide * sin(t)) for t in turns]


def line_of(point):
    x, y = on_map(point)
    return f"{x:.3f} {y:.3f}\n"


def region(*polygons):
    text = f"Region {len(polygons)}\n"
    for polygon in polygons:
        closed = polygon + polygon[:1]
        text += f"  {len(closed)}\n" + "".join(line_of(p) for p in closed)
    return text + "    Pen (1,2,0)\n    Brush (1,0,16777215)\n"


def polyline(points):
    return f"Pline {len(points)}\n" + "".join(line_of(p) for p in points) + "    Pen (2,2,0)\n"


def point(p):
    return "Point " + line_of(p) + "    Symbol (34,0,9)\n"


def write_layer(name, kind, objects):
    with open(name + ".mif", "w", encoding="ascii") as mif:
        mif.write('Version 300\nCharset "WindowsLatin1"\nDelimiter ","\n' + COORD_SYS + "\n")
        mif.write(f"Columns 2\n  Value {kind}\n  Name Char(40)\nData\n\n")
        mif.writelines(shape for shape, _, _ in objects)
    with open(name + ".mid", "w", encoding="ascii") as mid:
        mid.writelines(f'{value},"{text}"\n' for _, value, text in objects)


def write_bed():
    with open("bed.asc", "w", encoding="ascii") as out:
        out.write(f"ncols {COLUMNS}\nnrows {ROWS}\nxllcorner 0\nyllcorner 0\ncellsize {CELL:g}\n")
        for row in reversed(range(ROWS)):
            y = (row + 0.5) * CELL
            out.write(" ".join(f"{bed((c + 0.5) * CELL, y):.2f}" for c in range(COLUMNS)) + "\n")


def write_pit_table():
    """D90 of the pit, cell by cell: row and column from 1, value."""
    x1, x2, d1, d2 = PIT
    with open("pit_d90.mid", "w", encoding="ascii") as out:
        for row in range(1, ROWS + 1):
            for column in range(1, COLUMNS + 1):
                x, y = (column - 0.5) * CELL, (row - 0.5) * CELL
                if x1 < x < x2 and d1 < from_centre(x, y) < d2:
                    out.write(f"{row},{column},0.00070\n")


def main():
    write_bed()
    write_pit_table()
    x1, x2, d1, d2 = PIT
    write_layer("grain_d50", "Float", [
        (region(strip(x1, x2, lambda x: d1, lambda x: d2)), 0.0004, "sand pit, coarse"),
        (region(ellipse(1.9), ellipse(1.35)), 0.00034, "apron of the island, without its core"),
    ])
    edge = lambda x: half_width(x)
    write_layer("rock", "Float", [
        (region(strip(SILL_X - 60, SILL_X + 60, lambda x: -edge(x), edge)), 21.0, "rock sill"),
        (polyline([along(PIPE_X - 30, -150), along(PIPE_X, 0), along(PIPE_X + 30, 150)]), 19.45,
         "pipeline under rock fill"),
    ])
    write_layer("protected", "Integer", [
        (region(strip(600, 800, lambda x: 0.86 * edge(x), lambda x: 1.25 * edge(x))), 0,
         "stone apron, left abutment"),
        (region(strip(600, 800, lambda x: -1.25 * edge(x), lambda x: -0.86 * edge(x))), 0,
         "stone apron, right abutment"),
    ])
    write_layer("cores", "Float", [
        (point(at(x, left)), voids, f"core {k + 1}")
        for k, (x, left, voids) in enumerate([(470, -30, 0.37), (540, 30, 0.36), (930, 0, 0.38)])
    ])


main()
