#include "core/common/TypeHelper.h"

#include <gtest/gtest.h>
#include <map>
#include <string>

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
using Zem::TypeHelper;

TEST(TypeHelperTest, NamesOfNamespacedAndTemplateTypes)
{
    struct Row {
        std::string full, shortName, expectedFull, expectedShort;
    };
    using Nested = Inner::Pair<Inner::Pair<double, Inner::Sample>, Inner::Sample*>;
    const Row rows[] = {
        {TypeHelper::getTypeName<int>(), TypeHelper::getShortTypeName<int>(), "int", "int"},
        {TypeHelper::getTypeName<Nested>(), TypeHelper::getShortTypeName<Nested>(),
         "ZemTypeHelperTest::Inner::Pair<ZemTypeHelperTest::Inner::Pair<double, ZemTypeHelperTest::Inner::Sample>, "
         "ZemTypeHelperTest::Inner::Sample*>",
         "Pair<Pair<double, Sample>, Sample*>"},
        {TypeHelper::getTypeName(typeid(Inner::Holder<Inner::Sample>::Nested)),
         TypeHelper::getShortTypeName(typeid(Inner::Holder<Inner::Sample>::Nested)),
         "ZemTypeHelperTest::Inner::Holder<ZemTypeHelperTest::Inner::Sample>::Nested", "Nested"},
        {TypeHelper::getTypeName<Local>(), TypeHelper::getShortTypeName<Local>(),
         "ZemTypeHelperTest::(anonymous namespace)::Local", "Local"},
        {TypeHelper::getTypeName<std::map<int, Inner::Sample>>(), TypeHelper::getShortTypeName<std::map<int, Inner::Sample>>(),
         "std::map<int, ZemTypeHelperTest::Inner::Sample, std::less<int>, "
         "std::allocator<std::pair<int const, ZemTypeHelperTest::Inner::Sample> > >",
         "map<int, Sample, less<int>, allocator<pair<int const, Sample> > >"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.expectedFull);
        EXPECT_EQ(row.full, row.expectedFull);
        EXPECT_EQ(row.shortName, row.expectedShort);
    }
}

TEST(TypeHelperTest, StripQualifiersToleratesOddTexts)
{
    EXPECT_EQ(TypeHelper::stripQualifiers(""), "");
    EXPECT_EQ(TypeHelper::stripQualifiers("::Global"), "Global");
    EXPECT_EQ(TypeHelper::stripQualifiers("Foo<(Zem::Kind)1>"), "Foo<(Kind)1>");
    // Unbalanced brackets come from no demangler, but must not crash.
    EXPECT_NO_THROW(TypeHelper::stripQualifiers("a>>)::b"));
}

} // namespace
