"""What the cases hand to the page: tables, numbers within the text, pictures."""
import csv
import math
import pathlib

STYLE = {
    "font.size": 9, "axes.titlesize": 10, "axes.spines.top": False, "axes.spines.right": False,
    "axes.grid": True, "grid.color": "#dddddd", "axes.edgecolor": "#555555", "legend.frameon": False,
    "legend.fontsize": 8, "figure.dpi": 100, "lines.linewidth": 1.5}
BLUE, ORANGE, GREEN, GREY, BLACK = "#0060b0", "#d98200", "#7a9a20", "#888888", "#202020"


class Report:
    def __init__(self, results, pictures):
        self.results, self.pictures = pathlib.Path(results), pathlib.Path(pictures)
        self.results.mkdir(parents=True, exist_ok=True)
        self.values = {}  # by the name that the page uses

    def table(self, name, head, rows):
        """Cells are texts; on the page as Markdown, in the results as CSV."""
        lines = [head, ["---"] * len(head), *rows]
        self.values[name] = "\n".join("| " + " | ".join(line) + " |" for line in lines)
        with (self.results / f"{name}.csv").open("w", newline="", encoding="utf-8") as file:
            csv.writer(file).writerows([head, *rows])
        print(self.values[name] + "\n", flush=True)

    def numbers(self, **texts):
        self.values.update(texts)

    def picture(self, figure, name):
        figure.tight_layout()
        for folder in (self.results, self.pictures):
            figure.savefig(folder / f"validation_{name}.png", metadata={"Software": None})
        self.values[f"{name}_picture"] = f"images/validation_{name}.png"


def panels(count, height=3.8, **options):
    # Imported here, so that tests of the cases ask for no matplotlib.
    import matplotlib
    matplotlib.use("Agg")
    from matplotlib import pyplot
    pyplot.rcParams.update(STYLE)
    figure, axes = pyplot.subplots(1, count, figsize=(10, height), **options)
    return (figure, *axes) if count > 1 else (figure, axes)


def size(value):
    """1.2e-16 as "below 1e-15": of an error by rounding nothing else is the same on all processors."""
    return "0" if value == 0 else f"below 1e{math.floor(math.log10(value)) + 1}"
