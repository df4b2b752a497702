#!/usr/bin/env python3
"""What a host developer on Windows gets: the archive unpacked, found, linked by MinGW and for
Microsoft's ABI, run under Wine.

Usage: windows_package_test.py BUILD_FOLDER VERSION WHAT_RUNS_PROGRAMS
"""
import pathlib
import shutil
import sys
import tempfile
import unittest

from package_test import done, files_of

TESTS = pathlib.Path(__file__).resolve().parent
TOOLCHAIN = TESTS.parents[1] / "cmake/windows.cmake"
BUILD, VERSION, RUNNER = None, None, None
LIBRARIES = {"bin/nivaro_morphology.dll", "lib/libnivaro_morphology.dll.a", "lib/nivaro_morphology.lib"}
OTHERS = {"include/nivaro_morphology.h", "include/nivaro_morphology.f90", "lib/nivaro_morphology.def",
          "lib/pkgconfig/nivaro_morphology.pc"}


class WindowsPackageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="nivaro_package_")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        done("cpack", "--config", BUILD / "CPackConfig.cmake", "-B", cls.folder / "packages")
        shutil.unpack_archive(next((cls.folder / "packages").glob("*.zip")), cls.folder)
        cls.tree = next(cls.folder.glob("nivaro-morphology-*"))

    def test_archive_holds_the_files_without_debug_sections(self):
        files = {f for f in files_of(self.tree) if not f.startswith("lib/cmake/")}
        self.assertEqual(files, LIBRARIES | OTHERS)
        for name in LIBRARIES:
            sections = done("x86_64-w64-mingw32-objdump", "-h", self.tree / name)
            self.assertNotIn(".debug", sections, name)

    def test_library_tells_what_it_is(self):
        shown = done("x86_64-w64-mingw32-windres", "-J", "coff",
                     self.tree / "bin/nivaro_morphology.dll")
        number = VERSION.replace(".", ", ")
        for line in (f" FILEVERSION {number}, 0\n", f" PRODUCTVERSION {number}, 0\n",
                     f'"FileVersion", "{VERSION}"', '"ProductName", "NIVARO Morphology"',
                     '"FileDescription", "Sand transport and bed evolution for 2D hydraulic models"'):
            self.assertIn(line, shown)

    def output_of_consumer(self, project, **options):
        build = pathlib.Path(tempfile.mkdtemp(dir=self.folder))
        done("cmake", "-G", "Ninja", "-S", TESTS / project, "-B", build,
             f"-DCMAKE_PREFIX_PATH={self.tree}", "-DCMAKE_FIND_ROOT_PATH_MODE_PACKAGE=BOTH",
             *(f"-D{name}={value}" for name, value in options.items()))
        done("cmake", "--build", build)
        shutil.copy(self.tree / "bin/nivaro_morphology.dll", build)
        return done(RUNNER, build / "consumer.exe")

    def test_hosts_of_mingw_in_c_and_fortran(self):
        for language, target in (("C", "shared"), ("Fortran", "Fortran")):
            with self.subTest(language):
                said = self.output_of_consumer(
                    "consumer", CMAKE_TOOLCHAIN_FILE=TOOLCHAIN, CONSUMER_LANGUAGE=language,
                    WANTED_VERSION="1.0", WANTED_COMPONENTS="shared",
                    WANTED_TARGET=f"NivaroMorphology::{target}")
                self.assertEqual(said.split(), ["0007", "5.0", "1"])

    def test_host_of_the_microsoft_abi(self):
        self.output_of_consumer("microsoft_consumer", CMAKE_SYSTEM_NAME="Windows",
                                CMAKE_C_COMPILER="clang-14",
                                CMAKE_C_COMPILER_TARGET="x86_64-pc-windows-msvc")


if __name__ == "__main__":
    BUILD, VERSION, RUNNER = pathlib.Path(sys.argv[1]), sys.argv[2], sys.argv[3]
    unittest.main(argv=sys.argv[:1])
