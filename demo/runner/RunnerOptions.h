#pragma once

#include <string>
#include <utility>
#include <vector>

namespace ZemDemo {

// What the command line of zemtree-run asks for.
struct RunnerOptions {
    std::string projectPath;
    bool isNew = false;
    std::string templateFolder;
    std::vector<std::string> testFilters;
    // --set NAME=VALUE, in the order given: a setting and the finite number it takes for this run.
    std::vector<std::pair<std::string, double>> settingOverrides;
    unsigned seed = 1;
    // --relay-set NAME=VALUE (and --curve KIND as overcurrent.curve), in the order given: settings of the
    // simulated relay that differ from the project's test object, as a relay set wrongly would.
    std::vector<std::pair<std::string, std::string>> relayOverrides;
    double timeScale = 0.1;
    std::string outputPath;
    std::string reportFolder;
    std::string xslPath;
    int language = 0;
    std::string checkPath;
    bool isHelp = false;
};

// Reads the arguments after the program name. Returns an empty text on success, otherwise the one-line reason
// the command line is refused; `options` is then partly filled and not to be used.
std::string parseRunnerOptions(const std::vector<std::string>& arguments, RunnerOptions& options);

// The text of --help: every option and the exit codes.
std::string runnerUsage();

} // namespace ZemDemo
