#!/usr/bin/env python3
"""What a current carries after a control file, how fast its bed waves travel, and the longest
morphology step by the rule of docs/user-guide.md.

Usage: longest_step.py BUILD_DIR CONTROL_FILE DEPTH SPEED CELL_SIZE HOURS
       DEPTH (m) and SPEED (m/s) where sand moves fastest, CELL_SIZE (m), HOURS of bed evolution
"""
import pathlib
import re
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "docs" / "figures"))
import line_host  # noqa: E402


# What the capacity needs of a control file. What is not in the file stays unset.
NEEDED = ("D50", "D90", "FALL VELOCITY", "CURRENT RELATED ROUGHNESS", "REFERENCE LEVEL",
          "MIXING LAYER THICKNESS", "MIXING COEFFICIENT", "DENSITY", "TIME CENTREING FACTOR")


def options_of(control_file, top=None):
    """The options that hold for all cells; what layers and tables set is left out."""
    top, found = top or control_file.parent, {}
    for line in control_file.read_text(encoding="utf-8", errors="replace").splitlines():
        command, separator, value = re.split("[!#]", line)[0].partition("==")
        command, value = command.strip().upper(), value.strip()
        if command == "READ FILE":
            found |= options_of(top / value.replace("\\", "/"), top)
        elif separator and not command.startswith("READ") and any(name in command for name in NEEDED):
            found[command] = value.split()[0]
    return found


def longest_steps(waves, bed_load_waves, cell_size, hours, theta):
    """By the speed of all bed waves, and by the growth of ripples to 20 % over the run."""
    growth = 0.2 / (1 / theta - 0.5)
    return (0.25 * cell_size / waves,
            growth * cell_size ** 2 / (bed_load_waves ** 2 * hours * 3600))


def main():
    if len(sys.argv) != 7:
        sys.exit(__doc__)
    build, control_file = map(pathlib.Path, sys.argv[1:3])
    depth, speed, cell_size, hours = map(float, sys.argv[3:])
    options = options_of(control_file)
    theta = next((float(options.pop(command)) for command in list(options) if "CENTREING" in command), 0.5)
    options = {command: None for command in line_host.SAND} | options

    line_host.load(build / "libnivaro_morphology.so")
    suspended, bed_load = line_host.capacity(depth, speed, options)
    print(f"carried       {suspended:.4g} suspended + {bed_load:.4g} bed load, kg/(s m)")
    waves = line_host.celerity(depth, speed, options)
    print(f"bed waves     {waves[0]:.2g} by suspended sand + {waves[1]:.2g} by bed load, m/s")
    if not min(waves) > 0:
        sys.exit("No bed waves: no sand moves, or an option is missing (docs/user-guide.md).")
    steps = longest_steps(sum(waves), waves[1], cell_size, hours, theta)
    print(f"longest step  {min(steps):.3g} s (bed waves {steps[0]:.3g} s, ripples {steps[1]:.3g} s)")


if __name__ == "__main__":
    main()
