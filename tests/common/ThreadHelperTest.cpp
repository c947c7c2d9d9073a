#include "core/common/ThreadHelper.h"

#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace {

// Each name is set on a thread of its own, so the test runner's thread keeps its name.
std::string nameSetOnFreshThread(const char* name)
{
    std::string seen;
    std::thread thread([&] {
        Zem::ThreadHelper::setCurrentThreadName(name);
        seen = Zem::ThreadHelper::getCurrentThreadName();
    });
    thread.join();
    return seen;
}

TEST(ThreadHelperTest, NamesAreCutToWhatLinuxKeeps)
{
    struct Row {
        const char* name;
        const char* given;
        std::string expected;
    };
    const std::vector<Row> rows = {
        {"short", "worker", "worker"},
        {"exactly 15 bytes", "abcdefghijklmno", "abcdefghijklmno"},
        {"long", "ZemTree_TestQueueEvaluator", "ZemTree_TestQue"},
        {"UTF-8 ending at the limit", "Поток_проверки", "Поток_пр"},
        // Here 15 bytes would end inside a two-byte Cyrillic letter: the whole letter goes.
        {"UTF-8 letter across the limit", "Потокпроверки", "Потокпр"},
        {"null", nullptr, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(nameSetOnFreshThread(row.given), row.expected);
    }
}

} // namespace
