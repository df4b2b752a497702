"""What tests of whole programs share: a folder of its own for each test, files in it, sand."""
import pathlib
import tempfile
import unittest

SAND = """Set Morphology D50 == 0.00016
Set Morphology D90 == 0.00020
Morphology Fall Velocity == 0.013
Morphology Current Related Roughness == 0.025
Morphology Reference Level == 0.0125
Morphology Mixing Layer Thickness == 0.0125
"""


class ProgramTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="nivaro test ")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def write(self, name, content):
        """The name of a file in the folder with this text, or these bytes."""
        path = self.folder / name
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return str(path)
