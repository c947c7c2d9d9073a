// Feeds arbitrary files to the project loader, with the example tests of the demo registered and its templates
// at hand. Whatever happens, loading throws std::runtime_error or gives a tree; a tree that was loaded saves, and
// what it saves loads again and saves the same text a second time. A broken promise stops the run with a trap.

#include "containers/ProjectFile.h"
#include "core/tree/Node.h"
#include "relay/DemoRelay.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace {

void check(bool condition)
{
    if (!condition)
        __builtin_trap();
}

std::string scratch(const char* name)
{
    return "/tmp/ztr-fuzz-project-" + std::to_string(::getpid()) + "-" + name;
}

std::string readText(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool registered = (ZemDemo::registerDemoTypes(), true);
    (void)registered;
    const std::string input = scratch("input.xml");
    const std::string first = scratch("first.xml");
    const std::string second = scratch("second.xml");
    {
        std::ofstream file(input, std::ios::binary | std::ios::trunc);
        file.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    }

    ZemTree::ProjectFile projects(ZTR_FUZZ_TEMPLATES);
    std::unique_ptr<ZemTree::Node> root;
    try {
        root = projects.load(input);
    }
    catch (const std::runtime_error&) {
        return 0;
    }
    check(root != nullptr);

    projects.save(*root, first);
    std::unique_ptr<ZemTree::Node> again = projects.load(first);
    projects.save(*again, second);
    std::unique_ptr<ZemTree::Node> third = projects.load(second);
    projects.save(*third, first);
    check(readText(first) == readText(second));
    return 0;
}
