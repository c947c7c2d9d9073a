#pragma once

#include "collections/IStructureChanged.h"
#include "core/common/ConvertionHelper.h"
#include "core/common/Out.h"
#include "core/common/ScopedConnection.h"
#include "core/common/XmlInclude.h"
#include "core/formula/ValueFormula.h"
#include "core/tree/DataObj.h"
#include "core/tree/IDataContainer.h"
#include "core/tree/IValueOut.h"
#include "core/tree/NodePathHelper.h"
#include "core/tree/ValueErrors.h"
#include "values/IValueSource.h"

#include <sigc++/connection.h>
#include <sigc++/signal.h>

#include <memory>
#include <mutex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace ZemTree {

class Node;

// Data types whose objects announce changes inside them: a shared pointer to an IStructureChanged. A value
// follows such an object, so that an edit in place reaches its listeners like a new object would.
template <class T> struct IsStructureChangedData : std::false_type {
};
template <class U> struct IsStructureChangedData<std::shared_ptr<U>> : std::is_base_of<IStructureChanged, U> {
};

// Data types with an empty state (a null pointer), which a value replaces by its default data.
template <class T> struct IsNullableData : std::is_pointer<T> {
};
template <class U> struct IsNullableData<std::shared_ptr<U>> : std::true_type {
};

// A typed cell that takes its content either from stored data or from a formula. What was set (the data, the
// formula text, the source flag) lives in a replaceable store; what is seen is the value out, a computed value
// with an error. While somebody listens to `signalValueOutChanged` the value out is computed at once on every
// change; otherwise it is only dropped and computed on the next reading, so that values nobody shows do not
// evaluate.
template <class T> class Value : public IValueSource<T>, public virtual IValueOut {
public:
    // `node` is the context of formulas and node paths; `source` may be null, then the first reading asks
    // `_getLazyInitedValueSource()`. Neither is owned.
    Value(Node* node, IValueSource<T>* source) : _node(node), _valueSource(source)
    {
        if (source != nullptr)
            _followData(source->getNativeData());
    }

    ~Value() override = default;

    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;

    // The value-out signal fires first, the flag signal second, so its listeners see the new value out.
    void setIsFormulaSource(bool isFormulaSource) override
    {
        if (isFormulaSource == getIsFormulaSource())
            return;
        _requireValueSource()->setIsFormulaSource(isFormulaSource);
        _onValueOutChanged();
        _onIsFormulaSourceChanged();
    }

    bool getIsFormulaSource() const override
    {
        const IValueSource<T>* const source = _getValueSource();
        return source != nullptr && source->getIsFormulaSource();
    }

    // Data objects compare by identity only: the same object edited in place fires nothing here, its structure
    // signal reports the edit. While the formula is the source, new data leaves the value out as it is, but the
    // data signal still fires.
    void setData(const T& data) override
    {
        const T coerced = _coerceSetData(data);
        if (getNativeData() == coerced)
            return;
        _requireValueSource()->setData(coerced);
        _onDataSetted();
        if (!getIsFormulaSource())
            _onValueOutChanged();
        _onDataChanged();
    }

    // An empty store (a null object) gets the default data written into it once, without a signal; the value
    // follows that object from then on.
    T getNativeData() const override
    {
        IValueSource<T>* const source = _getValueSource();
        if (source == nullptr)
            return _createDefaultData();
        T data = source->getNativeData();
        if constexpr (IsNullableData<T>::value) {
            if (data == nullptr) {
                data = _createDefaultData();
                source->setData(data);
                _followData(data);
            }
        }
        return data;
    }

    void setFormula(const std::string& formula) override
    {
        if (formula == getFormula())
            return;
        _requireValueSource()->setFormula(formula);
        _updateFormulaEvaluator();
        if (getIsFormulaSource())
            _onValueOutChanged();
        _onFormulaChanged();
    }

    const std::string& getFormula() const override
    {
        static const std::string noFormula;
        const IValueSource<T>* const source = _getValueSource();
        return source != nullptr ? source->getFormula() : noFormula;
    }

    // A copy of the value out's value, for those who do not know T.
    std::shared_ptr<IDataContainer> getValueObject() const override
    {
        return std::make_shared<DataObj<T>>(getValueOut().value);
    }

    // Valid until the value changes next; for the thread that changes the value.
    const Zem::ErrorPointer& getError() const override { return _getValueOutRecord()->error; }

    const ValueFormula* getActiveFormula() const override
    {
        return getIsFormulaSource() ? _formulaEvaluator.get() : nullptr;
    }

    // A copy of the value out, computed now if nothing is cached. The copy is taken under the record's lock, so a
    // view may read it on the GUI thread while the worker sets the value. A value whose formula leads back to
    // itself while it is being computed sees a default with DataConvertionError instead of recursing.
    Zem::Out<T> getValueOut() const { return *_getValueOutRecord(); }

    T getValue() const { return getValueOut().value; }

    sigc::signal<void> signalIsFormulaSourceChanged;
    sigc::signal<void> signalDataChanged;
    sigc::signal<void> signalFormulaChanged;

protected:
    // The store to use when none was given; a unit creates its working store here.
    virtual IValueSource<T>* _getLazyInitedValueSource() const { return nullptr; }
    // Adjusts data before it is compared and stored.
    virtual T _coerceSetData(const T& data) { return data; }
    // What stands in for missing or failed data: a null pointer, 0.0, an empty string unless overridden.
    virtual T _createDefaultData() const { return T{}; }
    // Adjusts a computed value out, from the data and from the formula alike. Must return a record.
    virtual std::unique_ptr<Zem::Out<T>> _coerceValueOut(std::unique_ptr<Zem::Out<T>> out) const { return out; }
    // The data form of a value element; each data type that is saved overrides both.
    virtual T _createDataFromXml(xmlpp::Element* /*element*/) const
    {
        throw std::runtime_error("Value setDataXml not implemented");
    }
    virtual void _getDataXml(const T& /*data*/, xmlpp::Element* /*element*/) const
    {
        throw std::runtime_error("Value getDataXml not implemented");
    }

    // The current store; the first call without one asks for a lazily made store and follows its data.
    IValueSource<T>* _getValueSource() const
    {
        if (_valueSource != nullptr)
            return _valueSource;
        _valueSource = _getLazyInitedValueSource();
        _onDataSetted();
        return _valueSource;
    }

    std::unique_ptr<Zem::Out<T>> _getNativeValueOut() const
    {
        return getIsFormulaSource() ? _getNativeFormulaValueOut() : _getNativeDataValueOut();
    }

    std::unique_ptr<Zem::Out<T>> _getNativeDataValueOut() const
    {
        auto out = std::make_unique<Zem::Out<T>>();
        out->value = getNativeData();
        return out;
    }

    // The formula's result in T: taken as it is when the evaluator gives a T, else through the text forms of
    // both sides. Whatever fails leaves the default data with an error, so the value out stays usable.
    std::unique_ptr<Zem::Out<T>> _getNativeFormulaValueOut() const
    {
        auto out = std::make_unique<Zem::Out<T>>();
        if (_formulaEvaluator) {
            const auto& formulaOut = _formulaEvaluator->getValueOut();
            if (formulaOut.error) {
                out->value = _createDefaultData();
                out->error = formulaOut.error;
                return out;
            }
            const std::shared_ptr<IDataContainer> container =
                formulaOut.value ? formulaOut.value->getDataContainer() : nullptr;
            T data{};
            if (container && _tryGetData(*container, data)) {
                if constexpr (IsNullableData<T>::value) {
                    if (data == nullptr)
                        data = _createDefaultData();
                }
                out->value = std::move(data);
                return out;
            }
        }
        out->value = _createDefaultData();
        out->error = DataConvertionError::getInstance();
        return out;
    }

    // Coercion runs on both paths, so an override sees data and formula results alike.
    std::unique_ptr<Zem::Out<T>> _calculateValueOut() const { return _coerceValueOut(_getNativeValueOut()); }

    void _onDataChanged() const { signalDataChanged.emit(); }
    void _onFormulaChanged() { signalFormulaChanged.emit(); }
    void _onIsFormulaSourceChanged() { signalIsFormulaSourceChanged.emit(); }

    // With a listener the new record is computed at once and in place before the signal; without one the cache
    // is only dropped. A loop of formulas that keep waking each other is cut after a few nested rounds: the
    // record is still renewed, only the signal stays quiet.
    void _onValueOutChanged() const
    {
        if (signalValueOutChanged.empty()) {
            _storeValueOut(nullptr);
            return;
        }
        _storeValueOut(_calculateGuardedValueOut());
        if (_valueOutSignalDepth >= maxNestedValueOutSignals)
            return;
        const DepthGuard guard(_valueOutSignalDepth);
        signalValueOutChanged.emit();
    }

    // The data object changed inside: the data signal goes first here, and it fires with the formula as the
    // source too.
    void _onDataStructureChanged() const
    {
        _onDataChanged();
        _onValueOutChanged();
    }

    // The evaluator's result matters only while the formula is the source.
    void _formulaEvaluatorValueOutChanged()
    {
        if (getIsFormulaSource())
            _onValueOutChanged();
    }

    // An evaluator exists exactly for a non-empty formula.
    void _updateFormulaEvaluator()
    {
        const std::string& formula = getFormula();
        if (formula.empty()) {
            _formulaEvaluatorConnection.disconnect();
            _formulaEvaluator.reset();
            return;
        }
        auto evaluator = std::make_unique<ValueFormula>(_node, formula);
        _formulaEvaluatorConnection =
            evaluator->getSignalValueOutChanged().connect([this] { _formulaEvaluatorValueOutChanged(); });
        _formulaEvaluator = std::move(evaluator);
    }

    // Brings the evaluator in line with the current store, rebuilding it only for a different text.
    void _checkUpdateFormulaEvaluator()
    {
        if (!_formulaEvaluator) {
            if (!getFormula().empty())
                _updateFormulaEvaluator();
            return;
        }
        if (_formulaEvaluator->getFormula() != getFormula())
            _updateFormulaEvaluator();
    }

    // Switches the store and tells what differs between the old and the new one. A switch to or from no store
    // tells nothing. When something differs, the structure subscription stays on the object it was on until
    // the next setData or a switch between alike stores.
    void _switchValueSource(IValueSource<T>* source)
    {
        if (source == _valueSource) {
            _checkUpdateFormulaEvaluator();
            return;
        }
        if (source == nullptr || _valueSource == nullptr) {
            _valueSource = source;
            _onDataSetted();
            _checkUpdateFormulaEvaluator();
            return;
        }
        const IValueSource<T>* const old = _valueSource;
        const bool isFormulaSourceDiffers = old->getIsFormulaSource() != source->getIsFormulaSource();
        const bool isDataDiffers = !(old->getNativeData() == source->getNativeData());
        const bool isFormulaDiffers = old->getFormula() != source->getFormula();
        _valueSource = source;
        if (!isFormulaSourceDiffers && !isDataDiffers && !isFormulaDiffers) {
            _onDataSetted();
            _checkUpdateFormulaEvaluator();
            return;
        }
        _checkUpdateFormulaEvaluator();
        _onValueOutChanged();
        if (isFormulaSourceDiffers)
            _onIsFormulaSourceChanged();
        if (isDataDiffers)
            _onDataChanged();
        if (isFormulaDiffers)
            _onFormulaChanged();
    }

    // Moves the structure subscription to the current data object; other data types only drop it.
    void _onDataSetted() const
    {
        if constexpr (IsStructureChangedData<T>::value) {
            if (_valueSource != nullptr) {
                _followData(getNativeData());
                return;
            }
        }
        _dataStructureConnection.disconnect();
    }

    // False for a type without a text form.
    bool _tryConvertFromString(const std::string& text, T& data) const { return Zem::fromText(text, data); }

    // Writes `Source` (only when the formula is the source), `Formula` (whenever there is one, so a formula that
    // is switched off survives) and the data form.
    void _getValueXml(const IValueSource<T>* source, xmlpp::Element* element) const
    {
        if (source == nullptr || element == nullptr)
            return;
        if (source->getIsFormulaSource())
            element->set_attribute(sourceAttribute, formulaSourceText);
        if (!source->getFormula().empty())
            element->set_attribute(formulaAttribute, source->getFormula());
        _getDataXml(source->getNativeData(), element);
    }

    // Reads straight into `source`, so no value signal fires; the caller settles the evaluator and the value
    // out. The fields read before a failing data form keep their new content.
    void _setValueXml(IValueSource<T>* source, xmlpp::Element* element)
    {
        if (source == nullptr || element == nullptr)
            return;
        const xmlpp::Attribute* const formula = element->get_attribute(formulaAttribute);
        source->setFormula(formula != nullptr ? std::string(formula->get_value()) : std::string());
        const xmlpp::Attribute* const sourceKind = element->get_attribute(sourceAttribute);
        source->setIsFormulaSource(sourceKind != nullptr && sourceKind->get_value() == formulaSourceText);
        source->setData(_createDataFromXml(element));
        _onDataSetted();
    }

    // A formula text from pieces: texts as they stand, nodes as "{path}" relative to this value's node.
    template <class... Args> std::string _buildFormula(const Args&... args) const
    {
        std::ostringstream stream;
        _processFormulaArgs(stream, args...);
        return stream.str();
    }

    void _processFormulaArgs(std::ostringstream& /*stream*/) const {}

    template <class First, class... Rest>
    void _processFormulaArgs(std::ostringstream& stream, const First& first, const Rest&... rest) const
    {
        _processFormulaArg(stream, first);
        _processFormulaArgs(stream, rest...);
    }

    void _processFormulaArg(std::ostringstream& stream, const std::string& text) const { stream << text; }
    void _processFormulaArg(std::ostringstream& stream, const char* text) const { stream << text; }
    void _processFormulaArg(std::ostringstream& stream, const Node* node) const
    {
        _processFormulaNodeArg(stream, node);
    }

    void _processFormulaNodeArg(std::ostringstream& stream, const Node* node) const
    {
        stream << '{' << NodePathHelper::getPath(_node, node) << '}';
    }

private:
    static constexpr const char* sourceAttribute = "Source";
    static constexpr const char* formulaAttribute = "Formula";
    static constexpr const char* formulaSourceText = "Formula";
    static constexpr int maxNestedValueOutSignals = 16;

    struct FlagGuard {
        explicit FlagGuard(bool& flag) : _flag(flag), _former(flag) { _flag = true; }
        ~FlagGuard() { _flag = _former; }
        FlagGuard(const FlagGuard&) = delete;
        FlagGuard& operator=(const FlagGuard&) = delete;
        bool& _flag;
        bool _former;
    };

    struct DepthGuard {
        explicit DepthGuard(int& depth) : _depth(depth) { ++_depth; }
        ~DepthGuard() { --_depth; }
        DepthGuard(const DepthGuard&) = delete;
        DepthGuard& operator=(const DepthGuard&) = delete;
        int& _depth;
    };

    // The cached record, or one computed now. The lock guards only the pointer: computing runs outside it, as
    // slots called meanwhile may read this value again.
    std::shared_ptr<const Zem::Out<T>> _getValueOutRecord() const
    {
        if (std::shared_ptr<const Zem::Out<T>> cached = _loadValueOut())
            return cached;
        if (_isCalculatingValueOut) {
            if (!_cycleValueOut) {
                auto cycle = std::make_shared<Zem::Out<T>>();
                cycle->value = _createDefaultData();
                cycle->error = DataConvertionError::getInstance();
                _cycleValueOut = std::move(cycle);
            }
            return _cycleValueOut;
        }
        std::shared_ptr<const Zem::Out<T>> calculated = _calculateGuardedValueOut();
        // A slot run during the computation may have stored a newer record already.
        const std::lock_guard<std::mutex> lock(_valueOutMutex);
        if (!_valueOut)
            _valueOut = std::move(calculated);
        return _valueOut;
    }

    std::shared_ptr<const Zem::Out<T>> _loadValueOut() const
    {
        const std::lock_guard<std::mutex> lock(_valueOutMutex);
        return _valueOut;
    }

    // The old record is released outside the lock: its value may be a data object with a destructor of its own.
    void _storeValueOut(std::shared_ptr<const Zem::Out<T>> record) const
    {
        {
            const std::lock_guard<std::mutex> lock(_valueOutMutex);
            _valueOut.swap(record);
        }
    }

    // Marks the computation, so that a formula leading back here reads the cycle record.
    std::unique_ptr<Zem::Out<T>> _calculateGuardedValueOut() const
    {
        const FlagGuard guard(_isCalculatingValueOut);
        return _calculateValueOut();
    }

    // Replaces the structure subscription by one to `data`.
    void _followData(const T& data) const
    {
        _dataStructureConnection.disconnect();
        if constexpr (IsStructureChangedData<T>::value) {
            if (data != nullptr)
                _dataStructureConnection =
                    data->getSignalStructureChanged().connect([this] { _onDataStructureChanged(); });
        }
    }

    IValueSource<T>* _requireValueSource() const
    {
        IValueSource<T>* const source = _getValueSource();
        if (source == nullptr)
            throw std::logic_error("The value has no store to write to");
        return source;
    }

    // The held T by type, or through the text forms of both sides. Type infos compare as the runtime compares
    // them: by name pointer first, then by name text unless the name is marked local.
    bool _tryGetData(const IDataContainer& container, T& data) const
    {
        if (container.getType() == typeid(T)) {
            const void* const held = container.getData();
            if (held == nullptr)
                return false;
            data = *static_cast<const T*>(held);
            return true;
        }
        std::string text;
        return container.tryConvertToString(text) && _tryConvertFromString(text, data);
    }

    Node* _node;
    mutable IValueSource<T>* _valueSource;
    mutable Zem::ScopedConnection _dataStructureConnection;
    std::unique_ptr<ValueFormula> _formulaEvaluator;
    Zem::ScopedConnection _formulaEvaluatorConnection;
    // The record a view reads on the GUI thread while the worker may replace it: the only field of a value that
    // crosses threads.
    mutable std::mutex _valueOutMutex;
    mutable std::shared_ptr<const Zem::Out<T>> _valueOut;
    mutable std::shared_ptr<const Zem::Out<T>> _cycleValueOut;
    mutable bool _isCalculatingValueOut = false;
    mutable int _valueOutSignalDepth = 0;
};

} // namespace ZemTree
