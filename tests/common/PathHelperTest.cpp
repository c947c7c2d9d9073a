#include "core/common/PathHelper.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

TEST(PathHelperTest, FileNameAndFileNameWithoutExtension)
{
    struct Row {
        std::string path, fileName, withoutExtension;
    };
    const std::vector<Row> rows = {
        {"a/b/c.xml", "c.xml", "c"},
        {"a/b/c.tar.xml", "c.tar.xml", "c.tar"},
        {"a/b/", "", ""},
        {".hidden", ".hidden", ".hidden"},
        {"dir/.hidden.xml", ".hidden.xml", ".hidden"},
        {"a.b/c", "c", "c"},
        {"name.", "name.", "name"},
        {"a/..", "..", ".."},
        {"шаблоны/Проверка.xml", "Проверка.xml", "Проверка"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE("\"" + row.path + "\"");
        EXPECT_EQ(Zem::getPathFileName(row.path), row.fileName);
        EXPECT_EQ(Zem::getPathFileNameWithoutExtension(row.path), row.withoutExtension);
    }
}

} // namespace
