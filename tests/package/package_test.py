#!/usr/bin/env python3
"""What a host developer does with the library: installs it, moves it, finds it, links it; makes the
packages and looks into them.

Usage: package_test.py BUILD_FOLDER VERSION
"""
import os
import pathlib
import shlex
import subprocess
import sys
import tempfile
import unittest

CONSUMER = pathlib.Path(__file__).resolve().parent / "consumer"
BUILD, VERSION = None, None
C_COMPILER = ("cc", "-std=c11", "-Wstrict-prototypes")

# 7 in four digits, the distance of (3, 4) from the origin, one warning counted.
EXPECTED = "0007 5.0 1\n"


def run(*command, **more):
    return subprocess.run([str(c) for c in command], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, timeout=250, **more)


def done(*command, **more):
    result = run(*command, **more)
    assert result.returncode == 0, f"{command}\n{result.stdout}"
    return result.stdout


def library_folder(tree):
    return next(tree.rglob("libnivaro_morphology.so.*")).parent


def files_of(tree):
    return {str(p.relative_to(tree)) for p in tree.rglob("*") if not p.is_dir()}


class PackageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="nivaro_package_")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        done("cmake", "--install", BUILD, "--prefix", cls.folder / "first")
        cls.tree = (cls.folder / "first").rename(cls.folder / "moved")

    def configure(self, **wanted):
        """A fresh build of the consumer: its folder and the finished run of CMake."""
        build = pathlib.Path(tempfile.mkdtemp(dir=self.folder))
        wanted = {"CONSUMER_LANGUAGE": "C", "WANTED_VERSION": "1.0", "WANTED_COMPONENTS": "shared",
                  "WANTED_TARGET": "NivaroMorphology::NivaroMorphology",
                  "CMAKE_CXX_FLAGS": "-Wall -Wextra -Wpedantic -Wconversion -Werror",
                  "CMAKE_PREFIX_PATH": self.tree} | wanted
        return build, run("cmake", "-G", "Ninja", "-S", CONSUMER, "-B", build,
                          *(f"-D{name}={value}" for name, value in wanted.items()))

    def needed_libraries(self, program):
        return done("objdump", "-p", program)

    def test_cmake_hosts_in_all_languages_link_either_library(self):
        cases = [  # language, components, target, shared, flags of the linker
            ("C", "shared", "NivaroMorphology::shared", True, ""),
            ("CXX", "shared;static", "NivaroMorphology::NivaroMorphology", True, ""),
            ("C", "static", "NivaroMorphology::NivaroMorphology", False, ""),
            ("CXX", "shared;static", "NivaroMorphology::static", False, ""),
            ("Fortran", "shared;static", "NivaroMorphology::Fortran", True, ""),
            ("Fortran", "static", "NivaroMorphology::Fortran", False, "-static"),
        ]
        for language, components, target, shared, flags in cases:
            with self.subTest(language=language, components=components, target=target):
                build, configured = self.configure(CONSUMER_LANGUAGE=language,
                                                   WANTED_COMPONENTS=components,
                                                   WANTED_TARGET=target,
                                                   CMAKE_EXE_LINKER_FLAGS=flags)
                self.assertEqual(configured.returncode, 0, configured.stdout)
                built = done("cmake", "--build", build)
                self.assertEqual(built.count("nivaro_morphology.f90.o"), language == "Fortran", built)
                self.assertEqual(done(build / "consumer"), EXPECTED)
                self.assertEqual("libnivaro_morphology.so.1" in
                                 self.needed_libraries(build / "consumer"), shared)

    def test_what_is_not_there_is_not_found(self):
        cases = [{"WANTED_VERSION": "2.0"}, {"WANTED_VERSION": "0.9"},
                 {"WANTED_COMPONENTS": "python"}]
        for wanted in cases:
            with self.subTest(wanted):
                _, configured = self.configure(**wanted)
                self.assertNotEqual(configured.returncode, 0)
                self.assertIn("NivaroMorphology", configured.stdout)

    def compile_by_hand(self, tree, *flags, compiler=C_COMPILER, source="consumer.c"):
        """The consumer, compiled with what pkg-config says, run."""
        environment = os.environ | {"PKG_CONFIG_PATH": str(library_folder(tree) / "pkgconfig")}
        static = ["--static"] if "-static" in flags else []
        said = done("pkg-config", "--cflags", "--libs", *static, f"nivaro_morphology = {VERSION}",
                    env=environment)
        program = pathlib.Path(tempfile.mkdtemp(dir=self.folder)) / "consumer"
        done(*compiler, "-Wall", "-Wextra", "-pedantic", "-Werror", CONSUMER / source, "-o", program,
             *flags, *shlex.split(said), cwd=program.parent)
        self.assertEqual(done(program, env={"LD_LIBRARY_PATH": str(library_folder(tree))}), EXPECTED)
        return program

    def test_pkg_config_hosts_link_either_library(self):
        self.assertIn("libnivaro_morphology.so.1",
                      self.needed_libraries(self.compile_by_hand(self.tree)))
        self.assertNotIn("NEEDED", self.needed_libraries(self.compile_by_hand(self.tree, "-static")))
        self.compile_by_hand(self.tree, "-static", source="consumer.f90",
                             compiler=("gfortran", self.tree / "include/nivaro_morphology.f90"))

    def test_packages_hold_the_tree(self):
        packages = self.folder / "packages"
        done("cpack", "--config", BUILD / "CPackConfig.cmake", "-G", "DEB;TGZ", "-B", packages)

        def fields(package):
            shown = done("dpkg-deb", "--field", package, "Package", "Version", "Depends")
            return dict(line.split(": ", 1) for line in shown.splitlines())

        development, runtime = sorted(packages.glob("*.deb"))
        self.assertEqual(fields(runtime)["Package"], "libnivaro-morphology1")
        for library in ("libc6 (>=", "libstdc++6 (>="):
            self.assertIn(library, fields(runtime)["Depends"])
        self.assertEqual(fields(development), {"Package": "libnivaro-morphology-dev",
                                               "Version": VERSION,
                                               "Depends": f"libnivaro-morphology1 (= {VERSION})"})

        folder = f"lib/{done('dpkg-architecture', '-qDEB_HOST_MULTIARCH').strip()}"
        done("dpkg-deb", "-x", runtime, self.folder / "root")
        self.assertEqual(files_of(self.folder / "root/usr"),
                         {f"{folder}/libnivaro_morphology.so.1",
                          f"{folder}/libnivaro_morphology.so.{VERSION}"})
        done("dpkg-deb", "-x", development, self.folder / "root")
        self.compile_by_hand(self.folder / "root/usr")

        done("tar", "-xzf", next(packages.glob("*.tar.gz")), "-C", self.folder)
        archive = next(self.folder.glob("nivaro-morphology-*"))
        self.assertEqual(files_of(archive), files_of(self.folder / "root/usr"))
        self.assertEqual(files_of(archive), files_of(self.tree))
        for library in [*self.tree.rglob("*.so.*.*"), *self.tree.rglob("*.a")]:
            self.assertNotIn(".debug", done("objdump", "-h", library), library)


if __name__ == "__main__":
    BUILD, VERSION = pathlib.Path(sys.argv[1]), sys.argv[2]
    unittest.main(argv=sys.argv[:1])
