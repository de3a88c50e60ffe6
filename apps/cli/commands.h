// The subcommands, each in the source named for it. They give the exit code and write to standard output and error.
#pragma once

#include <string>
#include <vector>

namespace quorvel::cli {

struct NewOptions {
  std::string map;
  bool force = false;  ///< replaces a file that is there
};
int runNew(const NewOptions& options);

struct InfoOptions {
  std::string file;
  bool json = false;
};
int runInfo(const InfoOptions& options);

struct ExportOptions {
  std::string file;
  std::string output;
  std::string page;            ///< empty: all foreground pages
  double pixelsPerInch = 150;  ///< of a PNG
};
int runExport(const ExportOptions& options);

struct ConvertOptions {
  std::string file;
  std::string output;  ///< its ending decides the format
  bool force = false;
};
int runConvert(const ConvertOptions& options);

struct ReportOptions {
  std::string file;
  std::string definition;            ///< a title or number, or the name of a file
  std::vector<std::string> outputs;  ///< their endings decide the formats
  std::string page;                  ///< empty: as the definition says
  bool list = false;                 ///< lists the definitions and runs none
  bool force = false;
};
int runReport(const ReportOptions& options);

struct UpgradeOptions {
  std::vector<std::string> files;  ///< drawings, and folders of drawings
  bool dryRun = false;             ///< writes nothing
  bool inPlace = false;            ///< writes over the drawing, else next to it
  bool backup = false;             ///< keeps a copy of a drawing that is written over
  bool force = false;              ///< replaces a file that is there
  bool json = false;
};
int runUpgrade(const UpgradeOptions& options);

struct SampleOptions {
  std::string map;
  bool force = false;
};
int runSample(const SampleOptions& options);

/// Becomes the Python interpreter; returns only when that fails. The first one is the script.
int runScript(const std::vector<std::string>& scriptAndArguments);

}  // namespace quorvel::cli
