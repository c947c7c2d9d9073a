#include "core/common/UniversalFactory.h"

#include "core/common/TypeHelper.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

struct Shape {
    virtual ~Shape() = default;
    virtual std::string kind() const = 0;
};

struct Circle : Shape {
    std::string kind() const override { return "circle"; }
};

struct Square : Shape {
    std::string kind() const override { return "square"; }
};

std::unique_ptr<Shape> makeCircle()
{
    return std::make_unique<Circle>();
}

std::unique_ptr<Shape> makeSquare()
{
    return std::make_unique<Square>();
}

TEST(UniversalFactoryTest, RegisteredTypeIsMadeByItsTypeName)
{
    Zem::UniversalFactory<Shape> factory;
    EXPECT_TRUE(factory.registerType<Circle>());
    const std::string name = Zem::TypeHelper::getTypeName(typeid(Circle));
    ASSERT_TRUE(factory.isRegistered(name));

    const std::unique_ptr<Shape> first = factory.create(name);
    const std::unique_ptr<Shape> second = factory.create(name);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(first->kind(), "circle");
    EXPECT_NE(first.get(), second.get());
    // An unknown name gives null.
    EXPECT_FALSE(factory.isRegistered(Zem::TypeHelper::getTypeName(typeid(Square))));
    EXPECT_EQ(factory.create(Zem::TypeHelper::getTypeName(typeid(Square))), nullptr);
}

TEST(UniversalFactoryTest, FirstRegistrationOfANameWins)
{
    Zem::UniversalFactory<Shape> factory;
    EXPECT_TRUE(factory.registerType("shape", &makeCircle));
    EXPECT_TRUE(factory.registerType("shape", &makeSquare));
    EXPECT_EQ(factory.create("shape")->kind(), "circle");

    EXPECT_TRUE(factory.registerType<Square>());
    EXPECT_TRUE(factory.registerType<Square>());
    EXPECT_EQ(factory.getTypeNames().size(), 2u);
}

} // namespace
