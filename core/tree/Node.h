#pragma once

#include "collections/NotifyCollectionChangedSignalArgs.h"
#include "collections/NotifyUniquePtrCollection.h"
#include "core/tree/IDescriptionContainer.h"
#include "core/tree/IHierarchicalDescriptorContainer.h"
#include "core/tree/IIdContainer.h"
#include "core/tree/IIndexedElement.h"
#include "core/tree/LocalString.h"
#include "core/tree/SerializationMode.h"

#include <sigc++/signal.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct _xmlNode;

namespace xmlpp {
class Element;
}

namespace ZemTree {

class DisplayXmlParameters;

// A node of the tree. It is itself the owning collection of its children, so a tree dies from its root and
// every other pointer into it is non-owning. It carries the key and the description of the node, the parent
// link, the locks of the structure, and the frames of the saved XML and of the report XML.
//
// Saved form: every node is an element named "Node" with the attributes `Id` and, when the class must be
// rebuilt on reading, `Class`; below it the class's own attributes and child elements, then `Description`
// (only while the descriptors are editable), then the children, each again a "Node" element.
//
// A child element that cannot be read (no `Id`, a `Class` that is missing, empty or unknown, a child the node
// refuses) is kept as it was and written back after the sibling it followed, so that a save never drops what a
// newer or a damaged file holds. Problems name the node by its full path: "<path from the root>: <what>".
class Node : public Zem::NotifyUniquePtrCollection<Node>,
             public virtual IIdContainer,
             public virtual IDescriptionContainer,
             public virtual IHierarchicalDescriptorContainer,
             public virtual IIndexedElement {
public:
    using Args = Zem::NotifyCollectionChangedSignalArgs<Node*>;
    using SignalHierarchicalPositionChanged = sigc::signal<void, Node*, Args&>;
    using SignalDescriptionChanged = sigc::signal<void, Node*>;

    // The element name of a node in the saved and in the report XML.
    static const char* const XmlElementName;

    explicit Node(const std::string& id = "", const LocalString& description = LocalString::Empty());
    ~Node() override;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    Node* getParent() { return _parent; }
    const Node* getParent() const { return _parent; }
    Node* getRoot();
    const Node* getRoot() const;

    std::string getId() const override { return _id; }
    std::string getDescription() const override { return _description.getValue(); }
    const LocalString& getLocalDescription() const { return _description; }
    // Compares first; on a change stores and emits the description signal.
    void setDescription(const LocalString& description);

    // The keys from the root down to this node, the root's included, joined by "/": "Root/Settings/Voltage".
    std::string getHierarchicalId() const override;
    // The non-empty descriptions from the root down to this node, joined by " / ".
    std::string getHierarchicalDescription() const override;
    // The place in the parent, -1 at a root.
    std::int64_t getIndex() const override;

    // The first direct child with this key, or null.
    Node* findChild(const std::string& id) const;

    // May `item` become a child of this node. Containers narrow it; a plain node takes any node.
    virtual bool canContains(Node* item);
    // True while the descriptors are fixed: a node that belongs to a locked collection is part of a structure
    // built by the system, so its description comes from code, not from the user or from a file.
    virtual bool isReadOnlyDescriptors() const { return _isParentCollectionLocked; }
    bool isParentCollectionLocked() const { return _isParentCollectionLocked; }

    // Creates this node's element under `parent`, fills it, and returns it. A null parent gives null.
    virtual xmlpp::Element* getXml(xmlpp::Element* parent, const SerializationMode& mode) const;
    // Reads this node from its own element. Problems go to `mode.problems` and reading goes on.
    virtual void setXml(xmlpp::Element* own, const SerializationMode& mode);
    // Writes the report of this node and of its children under `parent`.
    virtual void getDisplayXml(DisplayXmlParameters& parameters, xmlpp::Element* parent) const;

    // Fires on a node and on all its descendants when it or an ancestor is added to or removed from a parent.
    // The first argument is the node whose signal fires; the arguments describe the change at the moved node
    // (`item` is the moved node, `index` its place in the parent it joined or left).
    SignalHierarchicalPositionChanged& getSignalHierarchicalPositionChanged()
    {
        return _signalHierarchicalPositionChanged;
    }
    SignalDescriptionChanged& getSignalDescriptionChanged() { return _signalDescriptionChanged; }

protected:
    void _onAdded(Node*& item, std::size_t index) override;
    void _onRemoved(Node*& item, std::size_t index) override;
    std::string _getAddingItemError(Node*& item, std::size_t index) override;
    std::string _getRemovingItemError(Node*& item, std::size_t index) override;
    void _onCollectionChanged(Args& args) override;
    void _lockCollection() override;
    void _unlockCollection() override;

    // A change among the children, after the collection signal.
    virtual void _onContentCollectionChanged(Args& args);
    // Whether the element carries `Class`, so that the reader can rebuild the node through NodeFactory.
    // True for a registered type that is not part of its parent's fixed structure; such a node is read in
    // place instead.
    virtual bool _isNeedClassNameSerialization(const SerializationMode& mode) const;
    // Told by the parent whenever its collection is locked or unlocked.
    virtual void _setIsParentCollectionLocked(bool isLocked);
    // The system fixed this node (its parent's or its own structure was locked by code). Tells the children
    // in turn; a subclass with lockable parts of its own locks them here.
    virtual void _onSystemLocked();

    virtual void _setExtendedXml(xmlpp::Element* own, const SerializationMode& mode);
    virtual void _setContentXml(xmlpp::Element* own, const SerializationMode& mode);
    virtual void _setDescriptorsXml(xmlpp::Element* own, const SerializationMode& mode);
    virtual void _getExtendedXml(xmlpp::Element* own, const SerializationMode& mode) const;
    virtual void _getContentXml(xmlpp::Element* own, const SerializationMode& mode) const;
    virtual void _getDescriptorsXml(xmlpp::Element* own, const SerializationMode& mode) const;
    // Makes a child from its element through NodeFactory: null when `Class` is missing or unknown.
    virtual std::unique_ptr<Node> _createNodeFromXml(xmlpp::Element* element);

    // Creates and returns this node's report element under `parent`: "Node" with `Id` and `Description`.
    // Null means the node does not report; its children then report into `parent`.
    virtual xmlpp::Element* _getDisplayXmlCurrent(DisplayXmlParameters& parameters, xmlpp::Element* parent) const;
    // The type word the frame puts on the report element as `DataType`; empty means none.
    virtual std::string _getDisplayXmlCurrentDataType() const { return std::string(); }

    virtual void _onParentChanged() {}

    // Records a problem met while reading without stopping the reading, as "<this node's path>: <message>".
    // Never throws.
    void _onSerializationError(const std::string& message, const SerializationMode& mode) const;
    // The same for a problem at another path, such as a child element that never became a node.
    static void _onSerializationErrorAt(const std::string& path, const std::string& message,
                                        const SerializationMode& mode);

    // Adds a property child even though this collection is locked: the lock is lifted and restored around it.
    Node* _addPropertyInner(std::unique_ptr<Node> property);
    // Locks this container against the user's adding and removing and tells it that the system fixed it.
    void _lockContainer();
    void _unlockContainer();
    // Passes the lock on to one child: locks its container and tells it that the system fixed it.
    void _lockChildContainer(Node* child);

    void _setId(const std::string& id) { _id = id; }

    // The first child element of `parent` named `name`, or null; for reading a class's own child elements.
    static xmlpp::Element* _getFirstChildElement(xmlpp::Element* parent, const std::string& name);

private:
    // A child element that could not be read, copied out of its document; written back after the child with
    // the key `afterId` (first when empty), in saves of the kind it was read with.
    struct KeptElement {
        std::shared_ptr<_xmlNode> element;
        std::string afterId;
        std::uint8_t kind = 0;
    };

    void _emitHierarchicalPositionChanged(Args& args);
    // Reads one child element; returns the child it went to, null when the element was kept unread.
    Node* _readChildElement(xmlpp::Element* element, const SerializationMode& mode, std::vector<Node*>& matched);
    void _keepElement(xmlpp::Element* element, const std::string& afterId, const SerializationMode& mode);
    void _writeKeptElements(xmlpp::Element* own, const std::string& afterId, const SerializationMode& mode) const;
    void _checkOwnText(xmlpp::Element* own, const SerializationMode& mode) const;
    std::string _pathForMessage() const;
    std::string _freeChildId(const std::string& id) const;

    std::string _id;
    LocalString _description;
    Node* _parent = nullptr;
    bool _isParentCollectionLocked = false;
    bool _isIdGivenByParent = false;
    std::vector<KeptElement> _keptElements;
    SignalHierarchicalPositionChanged _signalHierarchicalPositionChanged;
    SignalDescriptionChanged _signalDescriptionChanged;
};

} // namespace ZemTree
