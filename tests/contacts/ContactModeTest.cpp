#include "contacts/ContactMode.h"

#include "core/tree/EnumLimiter.h"
#include "core/tree/TreeLocalization.h"

#include <sigc++/connection.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using ZemTree::ContactMode;

class ContactModeTest : public ::testing::Test {
protected:
    void TearDown() override { lng::language = 0; }
};

const struct {
    const std::string& mode;
    const char* text;
    const char* key;
} modes[] = {
    {ContactMode::OFF, "OFF", "InContactMode.Off"},       {ContactMode::NoLoad, "NoLoad", "InContactMode.NoLoad"},
    {ContactMode::SC, "SC", "InContactMode.SC"},          {ContactMode::Pause, "Pause", "InContactMode.Pause"},
    {ContactMode::RPO, "RPO", "InContactMode.RPO"},       {ContactMode::RPV, "PRV", "InContactMode.RPV"},
};

TEST_F(ContactModeTest, DefaultLimiterHoldsEveryModeInOrderWithItsDisplayText)
{
    for (int language : {0, 1}) {
        SCOPED_TRACE(language);
        lng::language = language;
        // Emptied, the shared limiter is filled again in the language of the moment.
        ContactMode::getDefaultHardwareOutLimiter()->clearItems();
        const auto limiter = ContactMode::getDefaultHardwareOutLimiter();
        ASSERT_NE(nullptr, limiter);
        const auto items = limiter->getItems();
        ASSERT_EQ(std::size(modes), items.size());
        for (std::size_t index = 0; index < items.size(); ++index) {
            SCOPED_TRACE(modes[index].text);
            EXPECT_EQ(modes[index].text, modes[index].mode);
            EXPECT_EQ(modes[index].text, items[index]->getValue());
            EXPECT_EQ(std::string(lng::Tree::get(modes[index].key)), items[index]->getDisplay().getValue());
            EXPECT_NE(modes[index].key, items[index]->getDisplay().getValue()) << "key missing from the texts";
        }
    }
    // Asked again, the shared limiter is the same object and is not filled again.
    const auto first = ContactMode::getDefaultHardwareOutLimiter();
    int changes = 0;
    sigc::connection connection = first->getSignalChanged().connect([&changes] { ++changes; });
    EXPECT_EQ(first, ContactMode::getDefaultHardwareOutLimiter());
    EXPECT_EQ(std::size(modes), first->count());
    EXPECT_EQ(0, changes);
    connection.disconnect();
}

} // namespace
