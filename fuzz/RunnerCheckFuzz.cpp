// Feeds arbitrary files to the check of zemtree-run (--check), with the example tests of the demo registered and
// their templates at hand. Whatever happens, the check ends: a file that cannot be loaded gives one line that
// names it, and every problem of a file that loads is one line that begins with the path of its node. A broken
// promise stops the run with a trap.

#include "relay/DemoRelay.h"
#include "runner/ProjectCheck.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

void check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

bool isOneLine(const std::string& text)
{
    return !text.empty() && text.find_first_of("\r\n") == std::string::npos;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool registered = (ZemDemo::registerDemoTypes(), true);
    (void)registered;
    const std::string input = "/tmp/ztr-fuzz-check-" + std::to_string(::getpid()) + ".xml";
    {
        std::ofstream file(input, std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }

    const ZemDemo::ProjectCheck outcome = ZemDemo::checkProjectFile(input, ZTR_FUZZ_TEMPLATES);
    if (!outcome.isLoaded) {
        check(isOneLine(outcome.error));
        check(outcome.error.find(input) != std::string::npos);
        return 0;
    }
    for (const std::string& problem : outcome.problems) {
        check(isOneLine(problem));
        // "<path>: <what>", the path never empty.
        check(problem.find(": ") != std::string::npos && problem.find(": ") > 0);
    }
    return 0;
}
