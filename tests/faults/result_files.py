"""Small readers of the module's result files, as strict as any other program's. Each returns the list
of what a file holds in whole, and stops at a last piece that is not."""
import os
import re
import struct


def log_lines(prefix):
    with open(prefix + ".mlf", "rb") as file:
        return file.read().split(b"\n")[:-1]


def dataset_records(prefix):
    with open(prefix + "_morDH.dat", "rb") as file:
        data = file.read()
    if len(data) < 100:
        return []
    cards = struct.unpack_from("<15i", data)
    assert cards[:11] == (3000, 100, 3, 110, 4, 120, 1, 250, 0, 130, 170), cards
    assert cards[12] == 180 and cards[14] == 190, cards
    values, cells = cards[11], cards[13]
    size = 4 + 1 + 4 + cells + 4 * values
    records = []
    for start in range(100, len(data) - size + 1, size):
        card, status = struct.unpack_from("<ib", data, start)
        assert (card, status) == (200, 1), (start, card, status)
        records.append(data[start:start + size])
    return records


POSITIONS = r"[ \d.-]+\n"
OBJECT = re.compile(
    rf'Text\n"[^\n]*"\n{POSITIONS}    Font [^\n]*\n    Label [^\n]*\n'
    rf"|Point {POSITIONS}"
    rf"|(?:Pline|Region) +\d+\n(?:{POSITIONS})+(?:    (?:Pen|Brush)[^\n]*\n)*")


def mif_objects(base):
    """Pairs of object and record. Every whole object has a record, and there may be one too many."""
    if not os.path.exists(base + ".mid"):
        return []  # it is opened second
    with open(base + ".mif", encoding="latin1") as file:
        head, _, body = file.read().partition("\nData\n")
    with open(base + ".mid", encoding="latin1") as file:
        records = file.read().splitlines()
    if not head.startswith("Version 300\n"):
        return []
    objects, at = [], re.match(r"\n*", body).end()
    while found := OBJECT.match(body, at):
        objects.append(found.group())
        at = found.end()
    assert len(body) - at < 300, body[at:]  # nothing but a last object that was cut off
    assert len(records) >= len(objects), (len(records), len(objects))
    return list(zip(objects, records))


def shapes(base):
    """Pairs of content and attributes of a shapefile, in step with its index and its table."""
    parts = {}
    if not os.path.exists(base + ".dbf"):
        return []  # it is opened last
    for suffix in (".shp", ".shx", ".dbf"):
        with open(base + suffix, "rb") as file:
            parts[suffix] = file.read()
    shp, shx, dbf = parts.values()
    if len(shx) < 100 or len(shp) < 100 or len(dbf) < 32:
        return []  # the layer was never open
    for data in (shp, shx):
        assert struct.unpack_from(">i", data)[0] == 9994
        assert struct.unpack_from(">i", data, 24)[0] * 2 <= len(data)
    shp_end = 2 * struct.unpack_from(">i", shp, 24)[0]
    count = (2 * struct.unpack_from(">i", shx, 24)[0] - 100) // 8
    table_count, header, length = struct.unpack_from("<ihh", dbf, 4)
    assert table_count >= count, (table_count, count)
    assert not table_count or header + table_count * length <= len(dbf)
    found = []
    for record in range(count):
        offset, words = struct.unpack_from(">ii", shx, 100 + 8 * record)
        assert 2 * (offset + 4 + words) <= shp_end
        assert struct.unpack_from(">ii", shp, 2 * offset) == (record + 1, words)
        row = dbf[header + record * length:header + (record + 1) * length]
        assert row[:1] == b" "
        found.append((shp[2 * offset + 8:2 * (offset + 4 + words)], row))
    return found
