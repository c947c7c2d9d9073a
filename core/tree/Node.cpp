#include "core/tree/Node.h"

#include "core/common/StringHelper.h"
#include "core/common/TypeHelper.h"
#include "core/common/XmlInclude.h"
#include "core/tree/LocalStringTypeConverter.h"
#include "core/tree/NodeFactory.h"

#include <libxml/tree.h>

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <typeinfo>
#include <utility>

namespace ZemTree {

namespace {

const char* const idAttribute = "Id";
const char* const classAttribute = "Class";
const char* const descriptionElement = "Description";
// A unit's saved value; a second one in the same element is a fault of the file.
const char* const valueElement = "Value";
const char* const keptUnread = "; it is kept unread and saved as it was";

// How long a piece of stray text may be in a message.
constexpr std::size_t quotedTextLength = 40;

std::string quotedText(const std::string& text)
{
    const auto first = text.find_first_not_of(" \t\r\n");
    const auto last = text.find_last_not_of(" \t\r\n");
    std::string shown = text.substr(first, last - first + 1);
    for (char& c : shown) {
        if (c == '\n' || c == '\r' || c == '\t')
            c = ' ';
    }
    if (shown.size() > quotedTextLength) {
        std::size_t cut = quotedTextLength;
        // Never in the middle of a UTF-8 sequence.
        while (cut > 0 && (static_cast<unsigned char>(shown[cut]) & 0xC0) == 0x80)
            --cut;
        shown = shown.substr(0, cut) + "...";
    }
    return "'" + shown + "'";
}

// The text by which messages name a node: its path when it has one, else its type.
std::string nameForMessage(const Node& node)
{
    const std::string path = node.getHierarchicalId();
    return path.empty() ? Zem::TypeHelper::getTypeName(typeid(node)) : path;
}

} // namespace

const char* const Node::XmlElementName = "Node";

Node::Node(const std::string& id, const LocalString& description) : _id(id), _description(description) {}

Node::~Node() = default;

Node* Node::getRoot()
{
    Node* node = this;
    while (node->_parent != nullptr)
        node = node->_parent;
    return node;
}

const Node* Node::getRoot() const
{
    const Node* node = this;
    while (node->_parent != nullptr)
        node = node->_parent;
    return node;
}

void Node::setDescription(const LocalString& description)
{
    if (_description == description)
        return;
    _description = description;
    _signalDescriptionChanged.emit(this);
}

std::string Node::getHierarchicalId() const
{
    if (_parent == nullptr)
        return _id;
    return _parent->getHierarchicalId() + "/" + _id;
}

std::string Node::getHierarchicalDescription() const
{
    const std::string own = getDescription();
    if (_parent == nullptr)
        return own;
    const std::string above = _parent->getHierarchicalDescription();
    if (above.empty())
        return own;
    if (own.empty())
        return above;
    return above + " / " + own;
}

std::int64_t Node::getIndex() const
{
    if (_parent == nullptr)
        return -1;
    return _parent->getIndexOf(const_cast<Node*>(this));
}

Node* Node::findChild(const std::string& id) const
{
    for (Node* child : _items) {
        if (child != nullptr && child->_id == id)
            return child;
    }
    return nullptr;
}

bool Node::canContains(Node*)
{
    return true;
}

xmlpp::Element* Node::getXml(xmlpp::Element* parent, const SerializationMode& mode) const
{
    if (parent == nullptr)
        return nullptr;
    xmlpp::Element* own = parent->add_child(XmlElementName);
    own->set_attribute(idAttribute, _id);
    if (_isNeedClassNameSerialization(mode))
        own->set_attribute(classAttribute, Zem::TypeHelper::getTypeName(typeid(*this)));
    _getExtendedXml(own, mode);
    _getDescriptorsXml(own, mode);
    _getContentXml(own, mode);
    return own;
}

void Node::setXml(xmlpp::Element* own, const SerializationMode& mode)
{
    if (own == nullptr) {
        _onSerializationError("there is no element to read the node from", mode);
        return;
    }
    const xmlpp::Attribute* const id = own->get_attribute(idAttribute);
    if (id != nullptr && !_isIdGivenByParent)
        _id = id->get_value();
    _checkOwnText(own, mode);
    _setExtendedXml(own, mode);
    _setDescriptorsXml(own, mode);
    _setContentXml(own, mode);
}

void Node::getDisplayXml(DisplayXmlParameters& parameters, xmlpp::Element* parent) const
{
    xmlpp::Element* own = _getDisplayXmlCurrent(parameters, parent);
    if (own != nullptr) {
        const std::string dataType = _getDisplayXmlCurrentDataType();
        if (!dataType.empty())
            own->set_attribute("DataType", dataType);
    }
    xmlpp::Element* const target = own != nullptr ? own : parent;
    if (target == nullptr)
        return;
    for (Node* child : _items) {
        if (child != nullptr)
            child->getDisplayXml(parameters, target);
    }
}

void Node::_onAdded(Node*& item, std::size_t index)
{
    Zem::NotifyUniquePtrCollection<Node>::_onAdded(item, index);
    item->_parent = this;
    item->_setIsParentCollectionLocked(_isLocked);
    item->_onParentChanged();
}

void Node::_onRemoved(Node*& item, std::size_t index)
{
    Zem::NotifyUniquePtrCollection<Node>::_onRemoved(item, index);
    item->_parent = nullptr;
    item->_setIsParentCollectionLocked(false);
    item->_onParentChanged();
}

std::string Node::_getAddingItemError(Node*& item, std::size_t index)
{
    std::string error = Zem::NotifyUniquePtrCollection<Node>::_getAddingItemError(item, index);
    if (!error.empty())
        return error;
    if (item == nullptr)
        return "A node cannot take an empty child";
    if (item->_parent != nullptr)
        return "The node '" + nameForMessage(*item) + "' already has a parent";
    for (const Node* node = this; node != nullptr; node = node->_parent) {
        if (node == item)
            return "The node '" + nameForMessage(*item) + "' cannot be added below itself";
    }
    if (!canContains(item)) {
        return "The node '" + nameForMessage(*this) + "' cannot contain the node '" + item->_id + "' of type "
               + Zem::TypeHelper::getTypeName(typeid(*item));
    }
    return std::string();
}

std::string Node::_getRemovingItemError(Node*& item, std::size_t index)
{
    return Zem::NotifyUniquePtrCollection<Node>::_getRemovingItemError(item, index);
}

void Node::_onCollectionChanged(Args& args)
{
    Zem::NotifyUniquePtrCollection<Node>::_onCollectionChanged(args);
    _onContentCollectionChanged(args);
    if (args.item != nullptr
        && (args.action == Zem::NotifyCollectionChangedAction::Added
            || args.action == Zem::NotifyCollectionChangedAction::Removed))
        args.item->_emitHierarchicalPositionChanged(args);
}

void Node::_lockCollection()
{
    Zem::NotifyUniquePtrCollection<Node>::_lockCollection();
    for (Node* child : _items) {
        if (child != nullptr)
            child->_setIsParentCollectionLocked(true);
    }
}

void Node::_unlockCollection()
{
    Zem::NotifyUniquePtrCollection<Node>::_unlockCollection();
    for (Node* child : _items) {
        if (child != nullptr)
            child->_setIsParentCollectionLocked(false);
    }
}

void Node::_onContentCollectionChanged(Args&) {}

bool Node::_isNeedClassNameSerialization(const SerializationMode&) const
{
    return !_isParentCollectionLocked && NodeFactory::isRegistered(Zem::TypeHelper::getTypeName(typeid(*this)));
}

void Node::_setIsParentCollectionLocked(bool isLocked)
{
    _isParentCollectionLocked = isLocked;
}

void Node::_onSystemLocked()
{
    // A copy: an override below may restructure its own children while it locks them.
    const std::vector<Node*> children = _items;
    for (Node* child : children) {
        if (child != nullptr)
            child->_onSystemLocked();
    }
}

void Node::_setExtendedXml(xmlpp::Element*, const SerializationMode&) {}

void Node::_setContentXml(xmlpp::Element* own, const SerializationMode& mode)
{
    // Each existing child answers to one element only, so that repeated keys in a file make new nodes
    // instead of reading the same node twice.
    std::vector<Node*> matched;
    _keptElements.erase(std::remove_if(_keptElements.begin(), _keptElements.end(),
                                       [&mode](const KeptElement& kept) { return kept.kind == mode.kind; }),
                        _keptElements.end());
    std::string afterId;
    for (xmlpp::Node* child : own->get_children(XmlElementName)) {
        auto* element = dynamic_cast<xmlpp::Element*>(child);
        if (element == nullptr)
            continue;
        if (Node* read = _readChildElement(element, mode, matched))
            afterId = read->_id;
        else
            _keepElement(element, afterId, mode);
    }
}

void Node::_setDescriptorsXml(xmlpp::Element* own, const SerializationMode& mode)
{
    if (isReadOnlyDescriptors())
        return;
    xmlpp::Element* const description = _getFirstChildElement(own, descriptionElement);
    if (description == nullptr)
        return;
    try {
        setDescription(LocalStringTypeConverter::fromXmlData(description, false));
    }
    catch (const std::exception& error) {
        _onSerializationError(std::string("the description cannot be read: ") + error.what(), mode);
    }
}

void Node::_getExtendedXml(xmlpp::Element*, const SerializationMode&) const {}

void Node::_getContentXml(xmlpp::Element* own, const SerializationMode& mode) const
{
    if (_keptElements.empty()) {
        for (const Node* child : _items) {
            if (child != nullptr)
                child->getXml(own, mode);
        }
        return;
    }
    _writeKeptElements(own, std::string(), mode);
    for (const Node* child : _items) {
        if (child == nullptr)
            continue;
        child->getXml(own, mode);
        if (findChild(child->_id) == child)
            _writeKeptElements(own, child->_id, mode);
    }
    // Those whose sibling has gone since come last.
    for (const KeptElement& kept : _keptElements) {
        if (kept.kind == mode.kind && !kept.afterId.empty() && findChild(kept.afterId) == nullptr)
            xmlAddChild(own->cobj(), xmlDocCopyNode(kept.element.get(), own->cobj()->doc, 1));
    }
}

void Node::_keepElement(xmlpp::Element* element, const std::string& afterId, const SerializationMode& mode)
{
    xmlNode* const copy = xmlDocCopyNode(element->cobj(), nullptr, 1);
    if (copy == nullptr) {
        _onSerializationError("a child element cannot be kept: out of memory", mode);
        return;
    }
    KeptElement kept;
    kept.element = std::shared_ptr<xmlNode>(copy, xmlFreeNode);
    kept.afterId = afterId;
    kept.kind = mode.kind;
    _keptElements.push_back(std::move(kept));
}

void Node::_writeKeptElements(xmlpp::Element* own, const std::string& afterId, const SerializationMode& mode) const
{
    for (const KeptElement& kept : _keptElements) {
        if (kept.kind == mode.kind && kept.afterId == afterId)
            xmlAddChild(own->cobj(), xmlDocCopyNode(kept.element.get(), own->cobj()->doc, 1));
    }
}

void Node::_checkOwnText(xmlpp::Element* own, const SerializationMode& mode) const
{
    int values = 0;
    for (xmlNode* child = own->cobj()->children; child != nullptr; child = child->next) {
        if (child->type == XML_ELEMENT_NODE && xmlStrEqual(child->name, BAD_CAST valueElement))
            ++values;
        if (child->type != XML_TEXT_NODE && child->type != XML_CDATA_SECTION_NODE)
            continue;
        const std::string text = child->content != nullptr ? reinterpret_cast<const char*>(child->content) : "";
        if (text.find_first_not_of(" \t\r\n") != std::string::npos)
            _onSerializationError("the text " + quotedText(text) + " stands outside any element and is not read", mode);
    }
    if (values > 1)
        _onSerializationError("the element holds " + std::to_string(values) + " Value elements; the first is read",
                              mode);
}

std::string Node::_pathForMessage() const
{
    return nameForMessage(*this);
}

std::string Node::_freeChildId(const std::string& id) const
{
    for (unsigned suffix = 2;; ++suffix) {
        const std::string candidate = id + "_" + std::to_string(suffix);
        if (findChild(candidate) == nullptr)
            return candidate;
    }
}

void Node::_getDescriptorsXml(xmlpp::Element* own, const SerializationMode&) const
{
    if (isReadOnlyDescriptors() || _description.empty())
        return;
    LocalStringTypeConverter::toXmlData(_description, own, descriptionElement);
}

std::unique_ptr<Node> Node::_createNodeFromXml(xmlpp::Element* element)
{
    const xmlpp::Attribute* const className = element->get_attribute(classAttribute);
    if (className == nullptr)
        return nullptr;
    return NodeFactory::create(className->get_value());
}

xmlpp::Element* Node::_getDisplayXmlCurrent(DisplayXmlParameters&, xmlpp::Element* parent) const
{
    if (parent == nullptr)
        return nullptr;
    xmlpp::Element* own = parent->add_child(XmlElementName);
    own->set_attribute(idAttribute, _id);
    own->set_attribute(descriptionElement, getDescription());
    return own;
}

void Node::_onSerializationError(const std::string& message, const SerializationMode& mode) const
{
    if (mode.problems == nullptr)
        return;
    try {
        _onSerializationErrorAt(_pathForMessage(), message, mode);
    }
    catch (const std::bad_alloc&) {
        return;
    }
}

void Node::_onSerializationErrorAt(const std::string& path, const std::string& message, const SerializationMode& mode)
{
    if (mode.problems == nullptr)
        return;
    try {
        // One problem, one line, even when a key from the file holds a line break.
        std::string line = path + ": " + message;
        if (line.find_first_of("\r\n") != std::string::npos)
            line = Zem::StringHelper::replaceAll(Zem::StringHelper::replaceAll(line, "\r", "\\r"), "\n", "\\n");
        mode.problems->push_back(line);
    }
    catch (const std::bad_alloc&) {
        // Out of memory while reporting: the problem is lost, the reading goes on.
        return;
    }
}

Node* Node::_addPropertyInner(std::unique_ptr<Node> property)
{
    const bool wasLocked = _isLocked;
    _isLocked = false;
    Node* added = nullptr;
    try {
        added = add(std::move(property));
    }
    catch (...) {
        _isLocked = wasLocked;
        throw;
    }
    _isLocked = wasLocked;
    if (wasLocked)
        added->_setIsParentCollectionLocked(true);
    return added;
}

void Node::_lockContainer()
{
    _lockCollection();
    _onSystemLocked();
}

void Node::_unlockContainer()
{
    _unlockCollection();
}

void Node::_lockChildContainer(Node* child)
{
    if (child != nullptr)
        child->_lockContainer();
}

xmlpp::Element* Node::_getFirstChildElement(xmlpp::Element* parent, const std::string& name)
{
    if (parent == nullptr)
        return nullptr;
    for (xmlpp::Node* child : parent->get_children(name)) {
        if (auto* element = dynamic_cast<xmlpp::Element*>(child))
            return element;
    }
    return nullptr;
}

void Node::_emitHierarchicalPositionChanged(Args& args)
{
    _signalHierarchicalPositionChanged.emit(this, args);
    // A copy: a slot may change the children while the signal travels down.
    const std::vector<Node*> children = _items;
    for (Node* child : children) {
        if (child != nullptr)
            child->_emitHierarchicalPositionChanged(args);
    }
}

Node* Node::_readChildElement(xmlpp::Element* element, const SerializationMode& mode, std::vector<Node*>& matched)
{
    const std::string here = _pathForMessage();
    const xmlpp::Attribute* const idValue = element->get_attribute(idAttribute);
    if (idValue == nullptr) {
        _onSerializationError(std::string("a child element has no Id") + keptUnread, mode);
        return nullptr;
    }
    const std::string id = idValue->get_value();
    const std::string childPath = here + "/" + id;

    Node* child = nullptr;
    for (Node* candidate : _items) {
        if (candidate != nullptr && candidate->_id == id
            && std::find(matched.begin(), matched.end(), candidate) == matched.end()) {
            child = candidate;
            break;
        }
    }

    if (child == nullptr) {
        std::unique_ptr<Node> created;
        try {
            created = _createNodeFromXml(element);
        }
        catch (const std::exception& error) {
            _onSerializationErrorAt(childPath, std::string("the node cannot be created: ") + error.what() + keptUnread,
                                    mode);
            return nullptr;
        }
        if (!created) {
            const xmlpp::Attribute* const className = element->get_attribute(classAttribute);
            const std::string name = className != nullptr ? std::string(className->get_value()) : std::string();
            _onSerializationErrorAt(childPath,
                                    (name.empty() ? std::string("the node is not part of the structure and names no "
                                                                "class")
                                                  : "the class '" + name + "' is unknown")
                                        + keptUnread,
                                    mode);
            return nullptr;
        }
        // Two siblings never share a key: the later one gets a key of its own, so a save keeps both apart.
        created->_id = findChild(id) != nullptr ? _freeChildId(id) : id;
        try {
            child = add(std::move(created));
        }
        catch (const std::logic_error& error) {
            _onSerializationErrorAt(childPath, std::string("the node is refused: ") + error.what() + keptUnread, mode);
            return nullptr;
        }
        if (child->_id != id)
            _onSerializationErrorAt(childPath,
                                    "a second node with this Id is read as '" + here + "/" + child->_id + "'", mode);
    }

    matched.push_back(child);
    // A renamed child keeps its new key while it reads, so that its problems name it by the key it is saved with.
    child->_isIdGivenByParent = child->_id != id;
    try {
        child->setXml(element, mode);
    }
    catch (const std::exception& error) {
        child->_onSerializationError(std::string("the node is read only in part: ") + error.what(), mode);
    }
    child->_isIdGivenByParent = false;
    return child;
}

} // namespace ZemTree
