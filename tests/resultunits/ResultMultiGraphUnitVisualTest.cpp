#include "results/ResultMultiGraphUnitVisual.h"

#include "core/common/XmlInclude.h"

#include <gtest/gtest.h>
#include <string>

using ZemTree::ResultMultiGraphUnitVisual;

TEST(ResultMultiGraphUnitVisualTest, SettersSignalRealChangesOnly)
{
    ResultMultiGraphUnitVisual visual;
    int graphSignals = 0;
    int tableSignals = 0;
    visual.signalIsGraphVisibleChanged.connect([&] {
        ++graphSignals;
        EXPECT_FALSE(visual.getIsGraphVisible()) << "the flag is stored before the signal";
    });
    visual.signalIsTableVisibleChanged.connect([&] { ++tableSignals; });

    visual.setIsGraphVisible(true);
    visual.setIsTableVisible(true);
    EXPECT_EQ(graphSignals, 0);
    EXPECT_EQ(tableSignals, 0);

    visual.setIsGraphVisible(false);
    visual.setIsGraphVisible(false);
    EXPECT_EQ(graphSignals, 1);
    EXPECT_EQ(tableSignals, 0);
    EXPECT_TRUE(visual.getIsTableVisible());
}

// Only the three words of "off" switch a flag off; every other text, and absence, switches it on.
TEST(ResultMultiGraphUnitVisualTest, ReadingWords)
{
    struct Row {
        const char* text;
        bool visible;
    };
    const Row rows[] = {
        {"true", true},   {"1", true},  {"True", true},  {"false", false}, {"0", false},
        {"False", false}, {"no", true}, {"FALSE", true}, {"", true},       {" false", true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        xmlpp::Document document;
        xmlpp::Element* const element = document.create_root_node("Visual");
        element->set_attribute("IsTableVisible", row.text);

        ResultMultiGraphUnitVisual visual;
        visual.setIsGraphVisible(false);
        visual.setIsTableVisible(!row.visible);
        int signals = 0;
        visual.signalIsGraphVisibleChanged.connect([&signals] { ++signals; });
        visual.signalIsTableVisibleChanged.connect([&signals] { ++signals; });
        visual.fromXml(element);
        EXPECT_EQ(visual.getIsTableVisible(), row.visible);
        EXPECT_TRUE(visual.getIsGraphVisible()) << "an absent attribute shows";
        EXPECT_EQ(signals, 0);
    }
}
