#pragma once

#include "TemporaryFolder.h"
#include "containers/DefendContainer.h"
#include "containers/HierarchicalCollectionContainer.h"
#include "containers/HierarchicalContainer.h"
#include "containers/ParametersContainer.h"
#include "containers/ResultCollectionContainer.h"
#include "containers/SettingsContainer.h"
#include "containers/TestCollectionContainer.h"
#include "containers/TestContainer.h"
#include "core/common/ConvertionHelper.h"
#include "core/common/XmlInclude.h"
#include "core/tree/IRootContainer.h"
#include "core/tree/NodeFactory.h"
#include "core/tree/SerializationMode.h"
#include "core/tree/Unitable.h"
#include "evaluation/IHierarchicalContainer.h"
#include "results/IResultUnit.h"
#include "results/ResultBase.h"
#include "values/NumericUnit.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace ZemTreeTest {

// A result with a chosen state.
class FakeResult : public ZemTree::ResultBase {
public:
    explicit FakeResult(ZemTree::ResultState state) { _setState(state, ""); }
};

// A result unit that holds a FakeResult or nothing.
class FakeResultUnit : public ZemTree::Unitable, public virtual ZemTree::IResultUnit {
public:
    explicit FakeResultUnit(const std::string& id = "FakeResult") : ZemTree::Unitable(id) {}

    void setResult(std::optional<ZemTree::ResultState> state)
    {
        _result = state ? std::make_unique<FakeResult>(*state) : nullptr;
    }
    void clearResult() override { _result.reset(); }
    ZemTree::ResultBase* getResultValue() override { return _result.get(); }

    std::shared_ptr<ZemTree::IDataContainer> getValueObject() const override { return nullptr; }
    const Zem::ErrorPointer& getError() const override { return _error; }
    void setSaveIsActiveOnEmbedded(bool) override {}
    bool getSaveIsActiveOnEmbedded() const override { return false; }

private:
    std::unique_ptr<FakeResult> _result;
    Zem::ErrorPointer _error;
};

// The core's number unit under a short name, with the id as its description.
class NumberUnit : public ZemTree::NumericUnit {
public:
    explicit NumberUnit(const std::string& id = "Number", double value = 0.0)
        : ZemTree::NumericUnit(id, ZemTree::LocalString(id), ZemTree::LocalString::Empty(), value)
    {
    }
};

// A test with one setting and two result units, filled in the usual way.
class SampleTest : public ZemTree::TestContainer {
public:
    SampleTest() : SampleTest("SampleTest") {}
    explicit SampleTest(const std::string& id) : ZemTree::TestContainer(id) {}

    NumberUnit* current = nullptr;
    FakeResultUnit* first = nullptr;
    FakeResultUnit* second = nullptr;
    int fillCount = 0;
    int filledCount = 0;
    int startCount = 0;

    using ZemTree::TestContainer::_finishExecute;

protected:
    void _fillTemplate() override
    {
        ZemTree::TestContainer::_fillTemplate();
        ++fillCount;
        current = getSettings()->add(std::make_unique<NumberUnit>("Current", 5.0));
        first = getResults()->add(std::make_unique<FakeResultUnit>("First"));
        second = getResults()->add(std::make_unique<FakeResultUnit>("Second"));
    }
    void _onTemplateFilled() override
    {
        ZemTree::TestContainer::_onTemplateFilled();
        ++filledCount;
    }
    void startExecute() override { ++startCount; }
};

// A protection that can stand in a hierarchical object's collection.
class SampleProtection : public ZemTree::DefendContainer, public virtual ZemTree::IHierarchicalContainer {
public:
    SampleProtection() : SampleProtection("SampleProtection") {}
    explicit SampleProtection(const std::string& id) : ZemTree::DefendContainer(id) {}
};

// The root class of a sample project.
class SampleRoot : public ZemTree::HierarchicalContainer, public virtual ZemTree::IRootContainer {
public:
    SampleRoot() : ZemTree::HierarchicalContainer("Root", ZemTree::LocalString("Sample project"), "") {}
};

// Registers the sample classes once, so that files can name them.
inline void registerSampleTypes()
{
    static const bool registered = ZemTree::NodeFactory::registerType<SampleTest>()
                                   && ZemTree::NodeFactory::registerType<SampleProtection>()
                                   && ZemTree::NodeFactory::registerType<SampleRoot>();
    (void)registered;
}

// Makes and fills a node below `parent` (a null parent leaves it a root).
template <class T, class... Args> T* addFilled(ZemTree::Node* parent, Args&&... args)
{
    T* node = parent->add(std::make_unique<T>(std::forward<Args>(args)...));
    node->initContainer();
    return node;
}

inline ZemTree::SerializationMode modeOf(std::uint8_t kind)
{
    ZemTree::SerializationMode mode;
    mode.kind = kind;
    return mode;
}

// The saved form of a node as text.
inline std::string xmlOf(const ZemTree::Node& node, std::uint8_t kind)
{
    xmlpp::Document document;
    node.getXml(document.create_root_node("Doc"), modeOf(kind));
    return document.write_to_string();
}

// The value of an attribute, "<none>" when it is absent.
inline std::string attributeOf(const xmlpp::Element* element, const std::string& name)
{
    const xmlpp::Attribute* attribute = element->get_attribute(name);
    return attribute == nullptr ? "<none>" : std::string(attribute->get_value());
}

} // namespace ZemTreeTest
