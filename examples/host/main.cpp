// morphology_host: a small 2D hydraulic model that loads the morphology module, so that the module
// can be tried without owning a model.
#include <CLI/CLI.hpp>
#include <cstdlib>
#include <iostream>

#include "number_format.hpp"
#include "platform.hpp"
#include "simulation.hpp"

namespace {

namespace fs = std::filesystem;

// Exit codes. 1 belongs to the module, which ends the process itself when it cannot go on.
enum Exit {
  kDone = 0,
  kModuleStopped = 1,
  kBadCase = 2,
  kNoModule = 3,
  kNoResults = 4,
  kUnstable = 5
};

struct Options {
  std::string caseFolder;
  std::string out;
  std::string library;
  std::string control;
  double step = 0;
  double duration = 0;
  bool checkOnly = false;
};

constexpr const char* kFooter =
    "Example:  morphology_host examples/host/trench --out /tmp/trench\n"
    "\n"
    "Exit code: 0 done; 1 the module ended the run, its last message says why; 2 wrong command\n"
    "line or case; 3 the module cannot be loaded; 4 results cannot be written; 5 the flow or the\n"
    "bed became unstable.";

// What is wrong with a number; empty when nothing is.
std::string notAboveZero(const std::string& text) {
  double number = 0;
  return CLI::detail::lexical_cast(text, number) && number > 0 ? "" : text + " is not above 0";
}

// The case file itself is as good a name for a case as its folder.
fs::path folderOf(const fs::path& given) {
  if (given.filename() != "case.toml" || fs::is_directory(given)) return given;
  return given.has_parent_path() ? given.parent_path() : fs::path(".");
}

void describeOptions(CLI::App& app, Options& options) {
  app.footer(kFooter);
  const CLI::Validator aboveZero(notAboveZero, "ABOVE 0");
  app.add_option("CASE_FOLDER", options.caseFolder, "Folder that holds the case.toml")->required();
  app.add_option("--out,-o", options.out,
                 "Folder for results, made if need be (CASE_FOLDER/results)");
  app.add_option("--library,-l", options.library,
                 "The module to load (beside this program, else where the system looks)");
  app.add_option("--control,-c", options.control, "Another .mcf file than the case's")
      ->check(CLI::ExistingFile);
  app.add_option("--step", options.step, "Another morphology step, s")->check(aboveZero);
  app.add_option("--duration", options.duration, "Stop after so many hours of bed evolution")
      ->check(aboveZero);
  app.add_flag("--check", options.checkOnly, "Read the case, say what it holds, run nothing");
}

void applyOptions(host::Case& model, const Options& options) {
  if (!options.control.empty()) model.controlFile = options.control;
  if (options.step > 0) model.time.morphologyStep = options.step;
  if (options.duration > 0 && options.duration < model.time.durationHours) {
    model.time.durationHours = options.duration;
    std::erase_if(model.time.outputHours, [&](double h) { return h > options.duration - 1e-9; });
    model.time.outputHours.push_back(options.duration);
  }
}

fs::path findLibrary(const std::string& given) {
  // A bare name would be searched for by the loader only; a file of that name here comes first.
  if (!given.empty()) return fs::exists(given) ? fs::absolute(given) : fs::path(given);
  const std::string name = host::sharedLibraryName("nivaro_morphology");
  const fs::path beside = host::programFolder() / name;
  return fs::exists(beside) ? beside : fs::path(name);
}

void printCase(const host::Case& model) {
  const host::GridFrame& grid = model.grid;
  std::cout << "Case " << model.name << ": " << grid.columns << " x " << grid.rows << " cells of "
            << host::significant(grid.cellSize, 6) << " m, "
            << host::significant(model.time.durationHours, 6) << " h of bed evolution in steps of "
            << host::significant(model.time.morphologyStep, 6) << " s, flow accelerated "
            << host::significant(model.time.acceleration, 6) << " times.\nControl file "
            << model.controlFile.string() << std::endl;
}

// The module ends the whole process when it cannot go on. Then, and only then, the process exits
// with a run under way.
bool runIsUnderWay = false;

void explainModuleStop() {
  if (runIsUnderWay)
    std::cerr << "\nmorphology_host: the morphology module ended the run; its last message above "
                 "says why."
              << std::endl;
}

void run(const Options& options) {
  host::Case model = host::readCase(folderOf(options.caseFolder));
  applyOptions(model, options);
  printCase(model);
  if (options.checkOnly) return;

  const host::ModuleLibrary module(findLibrary(options.library));
  const fs::path out = options.out.empty() ? model.folder / "results" : fs::path(options.out);
  const host::ResultFolder results(out, model.name);

  std::atexit(explainModuleStop);
  runIsUnderWay = true;
  const host::RunReport report =
      host::runCase(model, module, results, std::cout, host::outputIsTerminal());
  runIsUnderWay = false;

  results.write("_summary.csv", host::summaryTable(report));
  host::printReport(std::cout, report);
  std::cout << "\nFiles written\n";
  for (const fs::path& file : results.list()) std::cout << "  " << file.string() << '\n';
  std::cout << std::flush;
}

int fail(Exit code, const std::exception& error) {
  runIsUnderWay = false;
  std::cout << std::flush;
  std::cerr << "morphology_host: " << error.what() << std::endl;
  return code;
}

}  // namespace

int main(int argc, char** argv) {
  host::outliveReaderOfOutput();
  CLI::App app(
      "A small 2D hydraulic model that computes the bed with the NIVARO Morphology module.",
      "morphology_host");
  Options options;
  describeOptions(app, options);
  try {
    app.parse(argc, argv);
    run(options);
    return kDone;
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kDone : kBadCase;
  } catch (const host::CaseError& error) {
    return fail(kBadCase, error);
  } catch (const host::LibraryError& error) {
    return fail(kNoModule, error);
  } catch (const host::UnstableError& error) {
    return fail(kUnstable, error);
  } catch (const std::exception& error) {
    return fail(kNoResults, error);
  }
}
