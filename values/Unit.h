#pragma once

#include "core/common/ScopedConnection.h"
#include "core/common/TypeHelper.h"
#include "core/common/XmlInclude.h"
#include "core/formula/EmbeddedDispatcher.h"
#include "core/formula/EmbeddedFormula.h"
#include "core/tree/ExtendedTypeInfoTypeConverter.h"
#include "core/tree/LocalString.h"
#include "core/tree/SerializationMode.h"
#include "core/tree/Unitable.h"
#include "values/IUnit.h"
#include "values/IValueSource.h"
#include "values/Value.h"
#include "values/ValueSource.h"

#include <exception>
#include <memory>
#include <string>
#include <typeinfo>
#include <utility>

namespace ZemTree {

class DisplayXmlParameters;

// A value standing in the tree as a node: a parameter, a setting or a result. It keeps a default that a template
// carries and a working value that the user edits; the hidden flag chooses between them (hidden: the value works
// on the default store, visible: on the working store). The working store is made on first need as a copy of the
// defaults, and while the unit is visible every change of a default is also made to the working value.
//
// Saved form, below what Unitable writes: a child element `Value` with `Source`, `Formula` and the data form,
// and with a template save an `Embedded` element with `TargetType` and `Formula`.
template <class T> class Unit : public Unitable, public Value<T>, public virtual IUnit {
public:
    Unit(const std::string& id, const LocalString& description, const LocalString& secondText, T defaultData)
        : Unitable(id, description, secondText), Value<T>(this, nullptr)
    {
        _defaultValueSource.setData(defaultData);
        // A unit has no free children; its properties come through _addPropertyInner.
        _lockCollection();
    }

    explicit Unit(const std::string& id) : Unit(id, LocalString::Empty(), LocalString::Empty(), T{}) {}

    Unit() : Unit("Unit") {}

    ~Unit() override
    {
        _destroyEmbeddedDispatcher();
        _baseValueSource.reset();
    }

    void setSaveIsActiveOnEmbedded(bool saveIsActive) override { _saveIsActiveOnEmbedded = saveIsActive; }
    bool getSaveIsActiveOnEmbedded() const override { return _saveIsActiveOnEmbedded; }

    bool isDefaultValueMode() const { return isHidden(); }

    bool getDefaultIsFormulaSource() const { return _getDefault().getIsFormulaSource(); }
    T getDefaultData() const { return _getDefault().getNativeData(); }
    const std::string& getDefaultFormula() const { return _getDefault().getFormula(); }

    // While visible the working value follows.
    void setDefaultIsFormulaSource(bool isFormulaSource)
    {
        _prepareWorkingValue();
        _getDefault().setIsFormulaSource(isFormulaSource);
        if (!isHidden())
            Value<T>::setIsFormulaSource(isFormulaSource);
    }

    void setDefaultFormula(const std::string& formula)
    {
        _prepareWorkingValue();
        _getDefault().setFormula(formula);
        if (!isHidden())
            Value<T>::setFormula(formula);
    }

    // While hidden the value itself is the default, so its signals fire and the data is not cloned; while
    // visible the working value gets its own clone.
    void setDefaultData(const T& data)
    {
        _prepareWorkingValue();
        _getDefault().setData(data);
        if (!isHidden())
            Value<T>::setData(_cloneData(data));
    }

    // Makes the working value a copy of the defaults through the signalling operations: flag, formula, data.
    // A hidden unit works on its defaults already.
    void resetValue()
    {
        if (isHidden())
            return;
        Value<T>::setIsFormulaSource(getDefaultIsFormulaSource());
        Value<T>::setFormula(getDefaultFormula());
        Value<T>::setData(_cloneData(getDefaultData()));
    }

    const EmbeddedFormula& getEmbeddedFormula() const { return _embeddedFormula; }

    // Once a node of the formula's target type is reachable, the default becomes the formula taken relative to
    // that node. An undefined target type is only stored.
    void setEmbeddedFormula(const EmbeddedFormula& formula)
    {
        _embeddedFormula = formula;
        if (!_embeddedFormula.getTargetType().isDefined())
            return;
        _destroyEmbeddedDispatcher();
        _embeddedDispatcher = std::make_unique<EmbeddedDispatcher>(this, &_embeddedFormula);
        if (_embeddedDispatcher->getTarget() != nullptr) {
            _onEmbeddedTargetChanged();
            return;
        }
        _embeddedTargetConnection =
            _embeddedDispatcher->getSignalTargetChanged().connect([this] { _onEmbeddedTargetChanged(); });
    }

    void setEmbeddedFormula(const EmbeddedFormula& formula, bool saveIsActive)
    {
        setSaveIsActiveOnEmbedded(saveIsActive);
        setEmbeddedFormula(formula);
    }

protected:
    // Report hooks: into the unit's own report element, parameters first, then the value.
    virtual void _getDisplayXmlCurrentParameters(DisplayXmlParameters& /*parameters*/,
                                                 xmlpp::Element* /*element*/) const
    {
    }
    virtual void _getDisplayXmlCurrentValue(DisplayXmlParameters& /*parameters*/, xmlpp::Element* /*element*/) const {}
    // The working value's copy of default data. Shared by default; a data type that must not be shared between
    // the default and the working value makes a copy.
    virtual T _cloneData(const T& data) const { return data; }

    IValueSource<T>* _getLazyInitedValueSource() const override { return _getBaseValueSource(); }

    void _getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const override
    {
        Unitable::_getExtendedXml(own, mode);
        // Only a template save writes the value of a hidden unit.
        if (mode.kind != SerializationMode::System && isHidden())
            return;
        xmlpp::Element* const valueElement = own->add_child(valueElementName);
        this->_getValueXml(_getSerializedSource(mode), valueElement);
        if (mode.kind == SerializationMode::System)
            _getEmbeddedFormulaXml(own);
    }

    // A template load always ends with the working value following the defaults; any other load cancels an
    // embedded formula that still waits for its target.
    void _setExtendedXml(xmlpp::Element* own, const SerializationMode& mode) override
    {
        Unitable::_setExtendedXml(own, mode);
        if (mode.kind == SerializationMode::System || !isHidden()) {
            if (xmlpp::Element* const valueElement = _getFirstChildElement(own, valueElementName)) {
                try {
                    this->_setValueXml(_getSerializedSource(mode), valueElement);
                }
                catch (const std::exception& error) {
                    _onSerializationError(error.what(), mode);
                }
            }
        }
        _updateValueSource();
        this->_onValueOutChanged();
        if (mode.kind == SerializationMode::System) {
            _setEmbeddedFormulaXml(own);
            resetValue();
        }
        else {
            _destroyEmbeddedDispatcher();
        }
    }

    // Parameters first, then the value, into the element the unit's frame made; then the formula of a computed
    // value and the text of an error as the attributes `Formula` and `Error`.
    xmlpp::Element* _getDisplayXmlCurrent(DisplayXmlParameters& parameters, xmlpp::Element* parent) const override
    {
        xmlpp::Element* const own = Unitable::_getDisplayXmlCurrent(parameters, parent);
        if (own == nullptr)
            return nullptr;
        _getDisplayXmlCurrentParameters(parameters, own);
        _getDisplayXmlCurrentValue(parameters, own);
        // A printed report says where a computed value came from, and why a value is not usable.
        if (this->getIsFormulaSource())
            own->set_attribute(formulaAttribute, this->getFormula());
        if (const Zem::ErrorPointer& error = this->getValueOut().error)
            own->set_attribute(errorAttribute, error->what());
        return own;
    }

    std::string _getDisplayXmlCurrentDataType() const override { return Zem::TypeHelper::getShortTypeName(typeid(T)); }

    void _onIsHiddenChanged() override { _updateValueSource(); }

    // Hidden: the default store is the value's store, so the value's signals fire. Visible: the default store
    // alone.
    IValueSource<T>& _getDefault()
    {
        if (isHidden())
            return *this;
        return _defaultValueSource;
    }

    const IValueSource<T>& _getDefault() const
    {
        if (isHidden())
            return *this;
        return _defaultValueSource;
    }

    // The three writes of resetValue straight into `source`, without signals.
    void _resetValue(IValueSource<T>& source) const
    {
        const IValueSource<T>& defaults = _getDefault();
        source.setIsFormulaSource(defaults.getIsFormulaSource());
        source.setFormula(defaults.getFormula());
        source.setData(_cloneData(defaults.getNativeData()));
    }

    // The working store, made on first need from the defaults.
    ValueSource<T>* _getBaseValueSource() const
    {
        if (!_baseValueSource) {
            auto source = std::make_unique<ValueSource<T>>();
            _resetValue(*source);
            _baseValueSource = std::move(source);
        }
        return _baseValueSource.get();
    }

    // Hidden: the default store; visible: the working store, also while it does not exist yet.
    void _updateValueSource()
    {
        if (isHidden())
            this->_switchValueSource(&_defaultValueSource);
        else
            this->_switchValueSource(_baseValueSource.get());
    }

    void _getEmbeddedFormulaXml(xmlpp::Element* own) const
    {
        if (!_embeddedFormula.getTargetType().isDefined())
            return;
        xmlpp::Element* const embedded = own->add_child(embeddedElementName);
        embedded->set_attribute(targetTypeAttribute,
                                ExtendedTypeInfoTypeConverter::toStringData(_embeddedFormula.getTargetType()));
        embedded->set_attribute(formulaAttribute, _embeddedFormula.getFormula());
    }

    // A missing or incomplete `Embedded` element is no error: the unit then has no embedded formula from file.
    void _setEmbeddedFormulaXml(xmlpp::Element* own)
    {
        xmlpp::Element* const embedded = _getFirstChildElement(own, embeddedElementName);
        if (embedded == nullptr)
            return;
        const xmlpp::Attribute* const targetType = embedded->get_attribute(targetTypeAttribute);
        if (targetType == nullptr)
            return;
        const xmlpp::Attribute* const formula = embedded->get_attribute(formulaAttribute);
        if (formula == nullptr)
            return;
        setEmbeddedFormula(EmbeddedFormula(ExtendedTypeInfoTypeConverter::fromStringData(targetType->get_value()),
                                           formula->get_value()));
    }

    // The target is reachable: the default becomes its formula, and the dispatcher, which serves once, goes.
    void _onEmbeddedTargetChanged()
    {
        if (!getSaveIsActiveOnEmbedded())
            Unitable::setIsActive(false);
        setDefaultIsFormulaSource(true);
        setDefaultFormula(_embeddedDispatcher->getCalculatedFormula());
        if (_baseValueSource)
            _resetValue(*_baseValueSource);
        _destroyEmbeddedDispatcher();
    }

private:
    static constexpr const char* valueElementName = "Value";
    static constexpr const char* embeddedElementName = "Embedded";
    static constexpr const char* targetTypeAttribute = "TargetType";
    static constexpr const char* formulaAttribute = "Formula";
    static constexpr const char* errorAttribute = "Error";

    // A template save and load go to the default store; a project save and load go to the working store when
    // one exists.
    const IValueSource<T>* _getSerializedSource(const SerializationMode& mode) const
    {
        if (mode.kind == SerializationMode::User && _baseValueSource)
            return _baseValueSource.get();
        return &_defaultValueSource;
    }

    // A project load reads straight into the working store, made first from the defaults when it does not exist
    // yet. Reading into the default store and cloning it later would lose whatever _cloneData leaves behind on
    // purpose, such as the channel path of a contact, which a saved binding must keep.
    IValueSource<T>* _getSerializedSource(const SerializationMode& mode)
    {
        if (mode.kind == SerializationMode::User && !isHidden())
            return _getBaseValueSource();
        return &_defaultValueSource;
    }

    // The dispatcher may be in the middle of its own signal: the slot is cut first, so that the signal goes
    // cleanly once its emission ends.
    void _destroyEmbeddedDispatcher()
    {
        _embeddedTargetConnection.disconnect();
        _embeddedDispatcher.reset();
    }

    // While visible the working value is made before a default changes, so that it starts from the former
    // defaults and the change reaches it, its evaluator and its listeners like any other change.
    void _prepareWorkingValue()
    {
        if (!isHidden())
            this->_getValueSource();
    }

    mutable std::unique_ptr<ValueSource<T>> _baseValueSource;
    ValueSource<T> _defaultValueSource;
    std::unique_ptr<EmbeddedDispatcher> _embeddedDispatcher;
    Zem::ScopedConnection _embeddedTargetConnection;
    EmbeddedFormula _embeddedFormula;
    bool _saveIsActiveOnEmbedded = false;
};

} // namespace ZemTree
