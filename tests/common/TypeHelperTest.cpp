#include "core/common/TypeHelper.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace ZemTypeHelperTest {
namespace Inner {

struct Sample {};
template <class A, class B> struct Pair {
};
template <class A> struct Holder {
    struct Nested {};
};

} // namespace Inner

namespace {
struct Local {};
} // namespace

} // namespace ZemTypeHelperTest

namespace {

using namespace ZemTypeHelperTest;

struct Row {
    const char* text;
    std::string full;
    std::string shortName;
};

TEST(TypeHelperTest, NamesOfNamespacedAndTemplateTypes)
{
    const std::vector<Row> rows = {
        {"builtin", Zem::TypeHelper::getTypeName<int>(), Zem::TypeHelper::getShortTypeName<int>()},
        {"namespaced class", Zem::TypeHelper::getTypeName(typeid(Inner::Sample)),
         Zem::TypeHelper::getShortTypeName(typeid(Inner::Sample))},
        {"template", Zem::TypeHelper::getTypeName(typeid(Inner::Pair<int, Inner::Sample>)),
         Zem::TypeHelper::getShortTypeName(typeid(Inner::Pair<int, Inner::Sample>))},
        {"nested template arguments",
         Zem::TypeHelper::getTypeName<Inner::Pair<Inner::Pair<double, Inner::Sample>, Inner::Sample*>>(),
         Zem::TypeHelper::getShortTypeName<Inner::Pair<Inner::Pair<double, Inner::Sample>, Inner::Sample*>>()},
        {"templated qualifier", Zem::TypeHelper::getTypeName<Inner::Holder<Inner::Sample>::Nested>(),
         Zem::TypeHelper::getShortTypeName<Inner::Holder<Inner::Sample>::Nested>()},
        {"anonymous namespace", Zem::TypeHelper::getTypeName<Local>(), Zem::TypeHelper::getShortTypeName<Local>()},
    };
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"int", "int"},
        {"ZemTypeHelperTest::Inner::Sample", "Sample"},
        {"ZemTypeHelperTest::Inner::Pair<int, ZemTypeHelperTest::Inner::Sample>", "Pair<int, Sample>"},
        {"ZemTypeHelperTest::Inner::Pair<ZemTypeHelperTest::Inner::Pair<double, ZemTypeHelperTest::Inner::Sample>, "
         "ZemTypeHelperTest::Inner::Sample*>",
         "Pair<Pair<double, Sample>, Sample*>"},
        {"ZemTypeHelperTest::Inner::Holder<ZemTypeHelperTest::Inner::Sample>::Nested", "Nested"},
        {"ZemTypeHelperTest::(anonymous namespace)::Local", "Local"},
    };
    ASSERT_EQ(rows.size(), expected.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(rows[i].text);
        EXPECT_EQ(rows[i].full, expected[i].first);
        EXPECT_EQ(rows[i].shortName, expected[i].second);
    }
}

TEST(TypeHelperTest, ShortNameStripsStandardLibraryQualifiers)
{
    EXPECT_EQ((Zem::TypeHelper::getShortTypeName<std::map<int, Inner::Sample>>()),
              "map<int, Sample, less<int>, allocator<pair<int const, Sample> > >");
}

TEST(TypeHelperTest, StripQualifiersToleratesOddTexts)
{
    EXPECT_EQ(Zem::TypeHelper::stripQualifiers(""), "");
    EXPECT_EQ(Zem::TypeHelper::stripQualifiers("::Global"), "Global");
    EXPECT_EQ(Zem::TypeHelper::stripQualifiers("Foo<(Zem::Kind)1>"), "Foo<(Kind)1>");
    // Unbalanced brackets come from no demangler, but must not crash.
    EXPECT_NO_THROW(Zem::TypeHelper::stripQualifiers("a>>)::b"));
}

} // namespace
