#include "runner/RunnerOptions.h"

#include "core/common/ConvertionHelper.h"
#include "relay/DemoRelay.h"

#include <cmath>
#include <cstddef>
#include <set>
#include <stdexcept>

namespace ZemDemo {

namespace {

bool parseUnsigned(const std::string& text, unsigned& value)
{
    if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos || text.size() > 9)
        return false;
    value = static_cast<unsigned>(std::stoul(text));
    return true;
}

bool parsePositive(const std::string& text, double& value)
{
    try {
        std::size_t used = 0;
        const double parsed = std::stod(text, &used);
        if (used != text.size() || !std::isfinite(parsed) || parsed <= 0 || parsed > 1000)
            return false;
        value = parsed;
        return true;
    }
    catch (const std::exception&) {
        return false;
    }
}

// "NAME=VALUE" with a finite number in the classic form; an empty text on success, else the reason.
std::string parseOverride(const std::string& text, std::pair<std::string, double>& setting)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0)
        return "--set wants NAME=VALUE, not '" + text + "'";
    const std::string value = text.substr(equals + 1);
    double number = 0.0;
    if (!Zem::fromText(value, number) || !std::isfinite(number))
        return "--set " + text + ": the value is not a finite number";
    setting = {text.substr(0, equals), number};
    return "";
}

} // namespace

std::string parseRunnerOptions(const std::vector<std::string>& arguments, RunnerOptions& options)
{
    // Only --test and --set add up; a second value of any other option would silently replace the first.
    std::set<std::string> given;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& name = arguments[i];
        if (name == "--help" || name == "-h") {
            options.isHelp = true;
            return "";
        }
        if (name.size() > 1 && name[0] == '-' && name != "--" && name != "--test" && name != "--set"
            && name != "--relay-set" && !given.insert(name).second)
            return "the option " + name + " is given twice";
        if (name == "--new") {
            options.isNew = true;
            continue;
        }
        if (name.empty() || name[0] != '-') {
            if (!options.projectPath.empty())
                return "more than one project given: '" + options.projectPath + "' and '" + name + "'";
            options.projectPath = name;
            continue;
        }
        if (name == "--") {
            if (i + 2 != arguments.size() || !options.projectPath.empty())
                return "'--' must be followed by exactly one project";
            options.projectPath = arguments[++i];
            continue;
        }
        static const char* const valued[] = {"--templates",  "--test",   "--seed",   "--curve",
                                             "--time-scale", "--output", "--report", "--xsl",
                                             "--lang",       "--check",  "--set",    "--relay-set"};
        bool isKnown = false;
        for (const char* known : valued)
            isKnown = isKnown || name == known;
        if (!isKnown)
            return "unknown option '" + name + "' (see --help)";
        if (i + 1 >= arguments.size())
            return "the option " + name + " needs a value";
        const std::string& value = arguments[++i];
        if (value.empty())
            return "the option " + name + " needs a non-empty value";

        if (name == "--templates")
            options.templateFolder = value;
        else if (name == "--test")
            options.testFilters.push_back(value);
        else if (name == "--set") {
            std::pair<std::string, double> setting;
            const std::string refusal = parseOverride(value, setting);
            if (!refusal.empty())
                return refusal;
            options.settingOverrides.push_back(setting);
        }
        else if (name == "--seed") {
            if (!parseUnsigned(value, options.seed))
                return "--seed wants a whole number from 0 to 999999999, not '" + value + "'";
        }
        else if (name == "--curve" || name == "--relay-set") {
            std::pair<std::string, std::string> setting{"overcurrent.curve", value};
            const std::size_t equals = value.find('=');
            if (name == "--relay-set") {
                if (equals == std::string::npos || equals == 0)
                    return "--relay-set wants NAME=VALUE, not '" + value + "'";
                setting = {value.substr(0, equals), value.substr(equals + 1)};
            }
            RelaySettings scratch;
            const std::string refusal = overrideRelaySetting(scratch, setting.first, setting.second);
            if (!refusal.empty())
                return name + ": " + refusal;
            options.relayOverrides.push_back(setting);
        }
        else if (name == "--time-scale") {
            if (!parsePositive(value, options.timeScale))
                return "--time-scale wants a number above 0 and up to 1000, not '" + value + "'";
        }
        else if (name == "--output")
            options.outputPath = value;
        else if (name == "--report")
            options.reportFolder = value;
        else if (name == "--xsl")
            options.xslPath = value;
        else if (name == "--lang") {
            if (value != "en" && value != "ru")
                return "--lang wants en or ru, not '" + value + "'";
            options.language = value == "ru" ? 1 : 0;
        }
        else
            options.checkPath = value;
    }

    if (!options.checkPath.empty()) {
        if (options.isNew || !options.projectPath.empty())
            return "--check takes its file alone, without --new or a project";
        return "";
    }
    if (options.isNew && !options.projectPath.empty())
        return "give either --new or a project, not both";
    if (!options.isNew && options.projectPath.empty())
        return "no project given (use --new for the sample project, see --help)";
    return "";
}

std::string runnerUsage()
{
    return "usage: zemtree-run [options] PROJECT\n"
           "       zemtree-run [options] --new\n"
           "       zemtree-run --check FILE\n"
           "\n"
           "Loads a test project, runs its chosen tests against a simulated relay, saves the project with the\n"
           "results and writes a report.\n"
           "\n"
           "options:\n"
           "  --new               build the sample project instead of loading one\n"
           "  --templates DIR     folder of the test templates (default: the project's own folder)\n"
           "  --test PATH         run only the chosen tests at or below PATH, matched by whole segments\n"
           "                      (Root/Tests/Pick does not select Root/Tests/Pickup); may be given several\n"
           "                      times; a PATH that selects no chosen test is an error\n"
           "  --set NAME=VALUE    run with the setting NAME at VALUE, a finite number: NAME is a setting's id\n"
           "                      (every chosen test that has it) or a unit's path from the root; may be given\n"
           "                      several times; a NAME that no chosen test has is an error\n"
           "  --seed N            seed of the simulated relay's noise (default 1)\n"
           "  --relay-set NAME=VALUE  set the simulated relay otherwise than the project's test object, as a relay\n"
           "                      set wrongly: overcurrent.pickup, overcurrent.curve, overcurrent.timeMultiplier,\n"
           "                      distance.reachR, distance.reachX, distance.lineAngle, contacts.delay; may be\n"
           "                      given several times\n"
           "  --curve KIND        the same as --relay-set overcurrent.curve=KIND (standard, very or extremely)\n"
           "  --time-scale F      how fast the relay runs: 0.1 is ten times faster than real time (default 0.1)\n"
           "  --output FILE       where the project is saved (default: over PROJECT; with --new ./project.xml)\n"
           "  --report DIR        write the report (report.xml, images/, report.html) into DIR\n"
           "  --xsl FILE          stylesheet that turns report.xml into report.html (default: the installed\n"
           "                      report.xsl); report.html needs the program xsltproc\n"
           "  --lang en|ru        language of the tree's texts and of the report (default en)\n"
           "  --check FILE        only load FILE and list its problems on stderr, one per line; run nothing\n"
           "  -h, --help          show this text\n"
           "\n"
           "Every option but --test, --set and --relay-set may be given once. Before the run each chosen test's "
           "settings are\n"
           "checked (values in error, numbers that are not finite, ramps and waits beyond their limits); a test that\n"
           "fails them is refused, with one line on stderr, and does not drive the relay. --check runs the same\n"
           "checks.\n"
           "\n"
           "Ctrl-C stops the run after the test under way has been cut short; the project and the report are still\n"
           "written. A test cut short keeps what it measured, but its missing points count as not tested, so it is\n"
           "never passed. A second Ctrl-C ends the program at once (exit code 130) without saving.\n"
           "\n"
           "exit codes:\n"
           "  0  every chosen test passed (--check: the file loads without problems)\n"
           "  1  some test failed, was refused or cut short, or the run was stopped\n"
           "     (--check: the file loads, with problems)\n"
           "  2  bad command line, or a file that cannot be read or written (--check: the file cannot be loaded)\n";
}

} // namespace ZemDemo
