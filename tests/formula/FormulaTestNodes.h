#pragma once

#include "core/common/Out.h"
#include "core/formula/ValueFormula.h"
#include "core/tree/DataObj.h"
#include "core/tree/IValueOut.h"
#include "core/tree/Node.h"
#include "core/tree/UnitableContainer.h"

#include <memory>
#include <string>

// Nodes shared by the formula tests.
namespace FormulaTest {

// A leaf with a value out of its own that a test sets; it counts how often its value is read.
class ValueNode : public ZemTree::Node, public ZemTree::IValueOut {
public:
    ValueNode(const std::string& id, double number)
        : Node(id), _data(std::make_shared<ZemTree::DataObj<double>>(number))
    {
    }

    void setData(std::shared_ptr<ZemTree::IDataContainer> data)
    {
        _data = std::move(data);
        signalValueOutChanged.emit();
    }
    void setNumber(double number) { setData(std::make_shared<ZemTree::DataObj<double>>(number)); }
    void setError(Zem::ErrorPointer error)
    {
        _error = std::move(error);
        signalValueOutChanged.emit();
    }

    std::shared_ptr<ZemTree::IDataContainer> getValueObject() const override
    {
        ++readCount;
        return _data;
    }
    const Zem::ErrorPointer& getError() const override { return _error; }

    mutable int readCount = 0;

private:
    std::shared_ptr<ZemTree::IDataContainer> _data;
    Zem::ErrorPointer _error;
};

// A node whose value out is a formula in its own context, as a value in the tree has it.
class FormulaNode : public ZemTree::Node, public ZemTree::IValueOut {
public:
    FormulaNode(const std::string& id, const std::string& formula) : Node(id)
    {
        _formula = std::make_unique<ZemTree::ValueFormula>(this, formula);
        _formula->getSignalValueOutChanged().connect([this] { signalValueOutChanged.emit(); });
    }

    ZemTree::ValueFormula& getFormula() { return *_formula; }

    std::shared_ptr<ZemTree::IDataContainer> getValueObject() const override
    {
        return _formula->getValueOut().value->getDataContainer();
    }
    const Zem::ErrorPointer& getError() const override { return _formula->getValueOut().error; }
    const ZemTree::ValueFormula* getActiveFormula() const override { return _formula.get(); }

private:
    std::unique_ptr<ZemTree::ValueFormula> _formula;
};

// A container type an embedded formula can ask for.
class TargetContainer : public ZemTree::UnitableContainer {
public:
    explicit TargetContainer(const std::string& id) : UnitableContainer(id) {}
};

// A container that names itself by a qualified type instead of its class.
class QualifiedContainer : public ZemTree::UnitableContainer {
public:
    explicit QualifiedContainer(const std::string& id) : UnitableContainer(id) {}

    ZemTree::ExtendedTypeInfo getExtendedTypeInfo() const override
    {
        return ZemTree::ExtendedTypeInfo("Relay::Protection", "Distance");
    }
};

// A value type without a text form.
struct Gadget {
    int size = 0;
};

} // namespace FormulaTest
