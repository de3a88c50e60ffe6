// The command `quorvel`: reads the command line and calls a subcommand.
#include <CLI/CLI.hpp>
#include <functional>
#include <iostream>

#include "cli/commands.h"
#include "cli/exit_codes.h"
#include "cli/process_memory.h"

namespace {

constexpr const char* exportHelp =
    R"(Without --page all foreground pages are drawn. A PDF holds them all; of SVG and PNG the first
page is OUT.svg, the others are in the same folder, with number and name after OUT
("OUT-2 Credit check.svg"). A stencil is drawn as one sheet of its masters. Prints the name
of each file written.)";

constexpr const char* reportHelp =
    R"(NAME is a title or a number of the list, or the file of a definition. The definitions are those
in the drawing; one that has none uses the installed ones. Prints the name of each file written.)";

constexpr const char* upgradeHelp =
    R"(Each map of an older version is opened, which brings it up to date, and written next to its file:
orders.vsdx as orders-upgraded.vsdx. Of a folder all .vsdx and .vdx files are done, those of its
subfolders too. Drawings that are no maps, and maps of the current version, are reported and not
written. One line says what was changed in each, the last one what was done in all. A file that
cannot be read or written is reported, and the others are done; the exit code is then 3.)";

constexpr const char* footer = R"(A drawing is a .vsdx, .vssx or .vstx file, or a .vdx, .vsx or .vtx of older releases.
Exit code: 0 done, 2 the command line was not understood, 3 a file could not be read or written.)";

}  // namespace

int main(int argc, char** argv) {
  using namespace quorvel::cli;
  prepareProcessMemory();
  CLI::App program{"Makes, reads and draws process maps.", "quorvel"};
  program.set_version_flag("--version", "quorvel " QUORVEL_VERSION);
  program.footer(footer);
  program.require_subcommand(1);
  std::function<int()> run;

  NewOptions forNew;
  CLI::App* command = program.add_subcommand("new", "Make a new process map from the template.");
  command->add_option("MAP", forNew.map, "The file to make, such as orders.vsdx")->required();
  command->add_flag("--force", forNew.force, "Replace the file if it exists");
  command->callback([&] { run = [&] { return runNew(forNew); }; });

  InfoOptions forInfo;
  command = program.add_subcommand("info", "Say what a drawing holds: pages, Tasks, links, connectors, hyperlinks.");
  command->add_option("FILE", forInfo.file, "The drawing")->required();
  command->add_flag("--json", forInfo.json, "For programs");
  command->callback([&] { run = [&] { return runInfo(forInfo); }; });

  ExportOptions forExport;
  command = program.add_subcommand("export", "Draw a drawing's pages as SVG, PNG or PDF.");
  command->footer(exportHelp);
  command->add_option("FILE", forExport.file, "The drawing")->required();
  command->add_option("-o,--output", forExport.output, "The file to write: OUT.svg, OUT.png or OUT.pdf")->required();
  command->add_option("--page", forExport.page, "Only the page of this name");
  command->add_option("--dpi", forExport.pixelsPerInch, "Pixels per inch of a PNG")->capture_default_str();
  command->callback([&] { run = [&] { return runExport(forExport); }; });

  ConvertOptions forConvert;
  command =
      program.add_subcommand("convert", "Write a drawing in another format: .vsdx, .vssx, .vstx, .vdx, .vsx or .vtx.");
  command->add_option("IN", forConvert.file, "The drawing")->required();
  command->add_option("OUT", forConvert.output, "The file to write; its ending decides the format")->required();
  command->add_flag("--force", forConvert.force, "Replace the file if it exists");
  command->callback([&] { run = [&] { return runConvert(forConvert); }; });

  ReportOptions forReport;
  command = program.add_subcommand("report", "Write a table of a drawing's Tasks, links or shapes.");
  command->footer(reportHelp);
  command->add_option("FILE", forReport.file, "The drawing")->required();
  CLI::Option* const list = command->add_flag("--list", forReport.list, "List the definitions that there are");
  CLI::Option* const definition = command->add_option("--definition", forReport.definition, "Which one: NAME");
  CLI::Option* const output =
      command->add_option("-o,--output", forReport.outputs, "The file to write: OUT.html, OUT.csv or OUT.xlsx")
          ->expected(1)
          ->take_all();
  command->add_option("--page", forReport.page, "Only the page of this name");
  command->add_flag("--force", forReport.force, "Replace the file if it exists");
  list->excludes(definition)->excludes(output);
  command->callback([&] {
    if (!forReport.list && forReport.definition.empty()) throw CLI::RequiredError("--definition or --list");
    if (!forReport.list && forReport.outputs.empty()) throw CLI::RequiredError("--output");
    run = [&] { return runReport(forReport); };
  });

  UpgradeOptions forUpgrade;
  command = program.add_subcommand("upgrade", "Bring maps of earlier versions up to date.");
  command->footer(upgradeHelp);
  command->add_option("FILE", forUpgrade.files, "Drawings, or folders of drawings")->required();
  command->add_flag("--dry-run", forUpgrade.dryRun, "Say what would be changed, and write nothing");
  CLI::Option* inPlace = command->add_flag("--in-place", forUpgrade.inPlace, "Write over the drawings themselves");
  command->add_flag("--backup", forUpgrade.backup, "Keep each drawing as it was, as orders.vsdx.bak")->needs(inPlace);
  command->add_flag("--force", forUpgrade.force, "Replace upgraded files of an earlier run")->excludes(inPlace);
  command->add_flag("--json", forUpgrade.json, "For programs, with what was changed on each page");
  command->callback([&] { run = [&] { return runUpgrade(forUpgrade); }; });

  SampleOptions forSample;
  command = program.add_subcommand("sample", "Make the sample map \"Order handling\".");
  command->add_option("MAP", forSample.map, "The file to make")->required();
  command->add_flag("--force", forSample.force, "Replace the file if it exists");
  command->callback([&] { run = [&] { return runSample(forSample); }; });

  command =
      program.add_subcommand("run", "Run a Python script that can import the module quorvel: run SCRIPT.py [ARGS...]");
  command->footer("Everything behind SCRIPT.py is the script's, whose exit code is passed on.");
  // What follows the script belongs to the script, options included.
  command->prefix_command();
  command->callback([&, command] {
    if (command->remaining().empty()) throw CLI::RequiredError("SCRIPT.py");
    run = [&, command] { return runScript(command->remaining()); };
  });

  try {
    program.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return program.exit(error) == 0 ? exitDone : exitUsage;
  }
  return run();
}
