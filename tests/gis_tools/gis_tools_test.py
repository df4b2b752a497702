#!/usr/bin/env python3
"""Layers that GDAL writes, read by the module and compared cell by cell with what GDAL makes of
them; and the module's check layer and messages layers, read by GDAL, and its project by QGIS where
PyQGIS is installed.

Usage: gis_tools_test.py LIBRARY SCENARIO_HOST
"""
import array
import csv
import json
import math
import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import unittest
from xml.etree import ElementTree

LIBRARY = SCENARIO_HOST = None
HOST = pathlib.Path(__file__).parent / "layer_host.py"
TOOLS = ("ogr2ogr", "gdal_rasterize")
SKIPPED = 77
# The system's own, which has its packages. It leaves at once: QGIS has been seen to crash in its end.
PYTHON_OF_QGIS = "/usr/bin/python3"
READ_PROJECT = """
import os, sys
from qgis.core import QgsApplication, QgsProject
application = QgsApplication([], False)
application.initQgis()
project = QgsProject.instance()
print(project.read(sys.argv[1]))
for layer in sorted(project.mapLayers().values(), key=lambda layer: layer.id()[-17:]):
    group = project.layerTreeRoot().findLayer(layer.id()).parent()
    print(group.name(), layer.name(), layer.isValid(), layer.geometryType(), layer.featureCount(),
          layer.renderer().symbol().type(), sep=",")
sys.stdout.flush()
os._exit(0)
"""

ROWS, COLUMNS, SIZE = 40, 55, 7.5
WIDTH, HEIGHT = COLUMNS * SIZE, ROWS * SIZE
DEFAULT = 0.00016
PLANE = 'CoordSys Earth Projection 8, 115, "m", 9, 0, 0.9996, 500000, 0'
GRIDS = {
    "along the axes": {"origin": (0.0, 0.0), "angle": 0.0},
    "turned, far from the origin": {"origin": (412345.678, 5678901.234), "angle": 0.6},
    "turned beyond a right angle": {"origin": (412345.678, 5678901.234), "angle": -2.3},
}


def ring(rng, x, y, least, most, corners=11):
    """A closed ring around a point, without crossings."""
    angles = sorted(rng.uniform(0, 2 * math.pi) for _ in range(corners))
    radii = [rng.uniform(least, most) for _ in angles]
    points = [[x + r * math.cos(a), y + r * math.sin(a)] for r, a in zip(radii, angles)]
    return points + points[:1]


def polygon(rng, x, y, size):
    return [ring(rng, x, y, 0.6 * size, size, 24), ring(rng, x, y, 0.1 * size, 0.3 * size)]


def anywhere(rng, margin=0.0):
    return [rng.uniform(-margin, WIDTH + margin), rng.uniform(-margin, HEIGHT + margin)]


def is_before_edge(point):
    """Within one cell before the grid, which counts as the first cell: no other tool's rule."""
    return any(-SIZE <= c <= 0.0 for c in point)


def points(rng):
    def one():
        while is_before_edge(point := anywhere(rng, 30.0)):
            pass
        return point
    return ([("Point", one()) for _ in range(60)] +
            [("MultiPoint", [one() for _ in range(7)]) for _ in range(10)])


def lines(rng):
    def one():
        return [anywhere(rng) for _ in range(rng.randint(2, 6))]
    return ([("LineString", one()) for _ in range(8)] +
            [("MultiLineString", [one() for _ in range(3)]) for _ in range(3)])


def regions(rng):
    def pair(x, y):
        return [polygon(rng, x, y, 40.0), polygon(rng, x + 90, y, 45.0)]
    return ([("Polygon", polygon(rng, *anywhere(rng, 20.0), rng.uniform(5.0, 90.0)))
             for _ in range(40)] + [("MultiPolygon", pair(*anywhere(rng))) for _ in range(10)])


def moved(coordinates, grid):
    """Coordinates of the grid's frame in the world."""
    if isinstance(coordinates[0], list):
        return [moved(c, grid) for c in coordinates]
    (x, y), (x0, y0), angle = coordinates, grid["origin"], grid["angle"]
    return [x0 + x * math.cos(angle) - y * math.sin(angle),
            y0 + x * math.sin(angle) + y * math.cos(angle)]


def tool(*command):
    done = subprocess.run([str(c) for c in command], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True)
    if done.returncode != 0:
        raise AssertionError(f"{command}: {done.stdout}")
    return done.stdout


class GisTools(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="nivaro gis ")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.prefix = str(self.folder / "run")

    def write_geojson(self, name, objects):
        features = [{"type": "Feature",
                     "properties": {"d50": 0.001 * (k + 1), "name": f'sand "{k}", x'},
                     "geometry": {"type": kind, "coordinates": coordinates}}
                    for k, (kind, coordinates) in enumerate(objects)]
        path = self.folder / name
        path.write_text(json.dumps({"type": "FeatureCollection", "features": features}))
        return path

    def write_layer(self, objects, grid):
        source = self.write_geojson("world.json", [(k, moved(c, grid)) for k, c in objects])
        layer = self.folder / "sand.mif"
        for old in (layer, layer.with_suffix(".mid")):
            old.unlink(missing_ok=True)
        tool("ogr2ogr", "-f", "MapInfo File", "-a_srs", "EPSG:25832", layer, source)

    def run_host(self, grid, control, header_source=PLANE):
        (self.folder / "run.mcf").write_text(control)
        case = {"prefix": self.prefix, "control": str(self.folder / "run.mcf"), "rows": ROWS,
                "columns": COLUMNS, "cell_size": SIZE, "header_source": header_source, **grid}
        (self.folder / "case.json").write_text(json.dumps(case))
        return subprocess.run([sys.executable, HOST, LIBRARY, self.folder / "case.json"],
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True, timeout=120)

    def assigned(self, grid):
        """D50 of the cells that `sand` sets, by (row, column) from 0."""
        run = self.run_host(grid, "Read MI Morphology D50 == sand\n")
        self.assertEqual(run.returncode, 0, run.stdout)
        field = array.array("d", pathlib.Path(self.prefix + ".d50").read_bytes())
        n = ROWS + 4
        cells = {(i, j): field[(j + 2) * n + i + 2] for i in range(ROWS) for j in range(COLUMNS)}
        return {cell: value for cell, value in cells.items() if value != DEFAULT}

    def rasterized(self, objects, *options):
        """The same by GDAL, in the grid's own frame."""
        source = self.write_geojson("local.json", objects)
        raster = self.folder / "raster"
        tool("gdal_rasterize", "-q", "-a", "d50", "-te", 0, 0, WIDTH, HEIGHT, "-ts", COLUMNS, ROWS,
             "-init", 0, "-ot", "Float64", "-of", "ENVI", *options, source, raster)
        pixels = array.array("d", raster.read_bytes())
        cells = {(ROWS - 1 - p // COLUMNS, p % COLUMNS): v for p, v in enumerate(pixels)}
        return {cell: value for cell, value in cells.items() if value != 0.0}

    def test_points_set_the_cells_around_them_and_regions_those_whose_centres_they_enclose(self):
        for seed, (name, grid) in enumerate(GRIDS.items()):
            for make in (points, regions):
                with self.subTest(name, kind=make.__name__):
                    objects = make(random.Random(seed))
                    self.write_layer(objects, grid)
                    ours, theirs = self.assigned(grid), self.rasterized(objects)
                    self.assertGreater(len(ours), 80)
                    self.assertEqual(set(ours), set(theirs))
                    for cell, value in ours.items():
                        self.assertAlmostEqual(value, theirs[cell], delta=1e-12, msg=str(cell))

    def test_lines_set_the_cells_along_them(self):
        for seed, (name, grid) in enumerate(GRIDS.items()):
            for one in lines(random.Random(seed)):
                with self.subTest(name, line=one):
                    self.write_layer([one], grid)
                    ours = set(self.assigned(grid))
                    self.assertLessEqual(ours, set(self.rasterized([one], "-at")))
                    self.assertLessEqual(set(centre_line_cells(*one)), ours)

    def test_check_layer_shows_every_cell(self):
        for (name, grid), source in zip(GRIDS.items(), (" ", PLANE, PLANE)):
            with self.subTest(name):
                control = "Set Morphology D50 == 0.00025\nSet Morphology D90 == 1.5\n"
                run = self.run_host(grid, control, header_source=source)
                self.assertEqual(run.returncode, 0, run.stdout)
                self.check_features(grid)

    def test_messages_as_shapefiles_in_a_project_with_the_layers_that_were_read(self):
        folder = self.folder / "b\u00e4che"
        folder.mkdir()
        self.folder, self.prefix = folder, str(folder / "run")
        self.write_layer([("Polygon", [[[0, 0], [2, 0], [2, 2], [0, 0]]])], GRIDS["along the axes"])
        control = folder / "run.mcf"
        control.write_text("Read MI Morphology D50 == Sand.MIF\n")
        subprocess.run([SCENARIO_HOST, "everything", self.prefix, control], stdin=subprocess.DEVNULL,
                       capture_output=True, env=os.environ | {"NIVARO_MESSAGE_LAYERS": "both"})

        text = tool("ogr2ogr", "-f", "CSV", "-lco", "GEOMETRY=AS_WKT", "/vsistdout/",
                    self.prefix + "_messages_P.shp")
        rows = list(csv.reader(text.splitlines()))
        self.assertEqual(rows[0], ["WKT", "Message", "Message_2", "Message_3", "Message_4", "Link"])
        self.assertEqual([row[:3] for row in rows[1:]],
                         [[f"POINT ({10 + k} 20)", f"WARNING 2000 - scour number {k}", ""]
                          for k in range(20)])
        project = self.prefix + "_messages.qgs"
        sources = [e.text for e in ElementTree.parse(project).getroot().iter("datasource")]
        self.assertEqual(sources, [str(folder / name) for name in
                                   ("sand.mif", "run_messages.mif", "run_messages_P.shp")])
        if subprocess.run([PYTHON_OF_QGIS, "-c", "import qgis.core"], capture_output=True).returncode:
            self.skipTest("the project was not read by QGIS (Debian: python3-qgis)")
        read = subprocess.run([PYTHON_OF_QGIS, "-c", READ_PROJECT, project], capture_output=True,
                              text=True, env=os.environ | {"QT_QPA_PLATFORM": "offscreen"})
        self.assertEqual(read.stdout.splitlines(),
                         ["True", "Input Layers,sand,True,2,1,2",
                          "Output Layers,run_messages,True,0,20,0",
                          "Output Layers,run_messages_P,True,0,20,0"], read.stderr)

    def check_features(self, grid):
        text = tool("ogr2ogr", "-f", "CSV", "-lco", "GEOMETRY=AS_WKT", "/vsistdout/",
                    self.prefix + "_mor_check.mif")
        head, *features = csv.reader(text.splitlines())
        self.assertEqual(" ".join(head), "WKT n m Grid_Ref Code ZC Domain_Index mor_d50 mor_d90 mor_IVR "
                         "mor_DVR mor_Bed_Limit_Z mor_Bed_Code")
        n = ROWS + 4
        elements = [(i, j, (j + 2) * n + i + 2) for i in range(ROWS) for j in range(COLUMNS)]
        expected = [(i, j, element) for i, j, element in elements if element % 3 != 0]
        for (i, j, element), (shape, *shown) in zip(expected, features, strict=True):
            # With offsets 100 and 700 the first cell, element (3, 3), is (101, 701). Three decimals of
            # ZC are exact here.
            self.assertEqual(shown.pop(2), f"{i + 101},{j + 701}")
            self.assertEqual([float(number) for number in shown],
                             [i + 101, j + 701, element % 3, 20.0 - element / 8.0, 1, 0.00025, 1.5, 0.4,
                              0.4, -99999.0, 1])
            self.assertRegex(shape, r"^POLYGON \(\([^()]*\)\)$")
            corners = [[float(c) for c in corner.split()] for corner in shape[10:-2].split(",")]
            square = [[j + 1, i + 1], [j, i + 1], [j, i], [j + 1, i], [j + 1, i + 1]]
            for corner, local in zip(corners, square, strict=True):
                wanted = moved([c * SIZE for c in local], grid)
                self.assertLessEqual(math.dist(corner, wanted), 0.0008)


def centre_line_cells(kind, coordinates):
    """Cells where a line crosses the centre lines of rows, or of columns where it is flatter."""
    for part in [coordinates] if kind == "LineString" else coordinates:
        for (xa, ya), (xb, yb) in zip(part, part[1:]):
            along, across = ((ya, yb), (xa, xb)) if abs(yb - ya) > abs(xb - xa) else \
                            ((xa, xb), (ya, yb))
            for k in range(max(ROWS, COLUMNS)):
                u = ((k + 0.5) * SIZE - along[0]) / (along[1] - along[0])
                if not 0.0 < u <= 1.0:
                    continue
                other = int((across[0] + u * (across[1] - across[0])) / SIZE)
                yield (k, other) if along == (ya, yb) else (other, k)


if __name__ == "__main__":
    LIBRARY, SCENARIO_HOST = map(os.path.abspath, (sys.argv.pop(1), sys.argv.pop(1)))
    if missing := [name for name in TOOLS if shutil.which(name) is None]:
        print(f"Skipped: {', '.join(missing)} of GDAL not found (Debian: gdal-bin)")
        sys.exit(SKIPPED)
    unittest.main()
