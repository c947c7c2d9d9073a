#include "core/tree/ValueErrors.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

using namespace ZemTree;

TEST(ValueErrorsTest, SingletonsAreSharedAndReadable)
{
    EXPECT_STREQ(MissingElementError::getInstance()->what(), "The element is missing");
    EXPECT_STREQ(DataConvertionError::getInstance()->what(), "The data cannot be converted");

    // A value out holds them as plain exceptions and still tells them apart.
    const std::shared_ptr<const std::exception> error = DataConvertionError::getInstance();
    EXPECT_NE(std::dynamic_pointer_cast<const DataConvertionError>(error), nullptr);
    EXPECT_EQ(std::dynamic_pointer_cast<const MissingElementError>(error), nullptr);
}

TEST(ValueErrorsTest, FormulaErrorNamesProblemAndPosition)
{
    const FormulaError error("Unknown function 'foo'", 3);
    EXPECT_STREQ(error.what(), "Unknown function 'foo' at position 3");

    // A copy owns its text: the original may be gone when the copy is read.
    std::unique_ptr<FormulaError> original = std::make_unique<FormulaError>("Unexpected end", 12);
    const FormulaError copy = *original;
    original.reset();
    EXPECT_STREQ(copy.what(), "Unexpected end at position 12");
}
