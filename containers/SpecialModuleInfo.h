#pragma once

#include "core/tree/LocalString.h"

#include <cstdint>
#include <string>

namespace xmlpp {
class Element;
}

namespace ZemTree {

// Where an item came from: the special module that supplied it, with its icon, file extension, title and help.
// Saved with a template as the child element `SpecialInfo`.
class SpecialModuleInfo {
public:
    SpecialModuleInfo() = default;

    std::uint64_t getUid() const { return _uid; }
    void setUid(std::uint64_t uid) { _uid = uid; }
    const std::string& getIconPath() const { return _iconPath; }
    void setIconPath(const std::string& iconPath) { _iconPath = iconPath; }
    const std::string& getExtension() const { return _extension; }
    void setExtension(const std::string& extension) { _extension = extension; }

    // The string forms read and write the current language.
    std::string getTitle() const { return _title.getValue(); }
    void setTitle(const std::string& title) { _title.setValue(title, ""); }
    const LocalString& getLocalTitle() const { return _title; }
    std::string getHelpPath() const { return _helpPath.getValue(); }
    void setHelpPath(const std::string& helpPath) { _helpPath.setValue(helpPath, ""); }
    const LocalString& getLocalHelpPath() const { return _helpPath; }

    // Creates `SpecialInfo` under `parent` with `UID`, `Icon`, `Extension` and the children `Title` and `Help`.
    // `Help` carries the title: files in the field have it so, and readers expect it.
    void getXml(xmlpp::Element* parent) const;
    // Reads the first child `SpecialInfo` of `parent`; without one nothing changes. A missing or non-numeric
    // `UID` throws std::invalid_argument, one out of range std::out_of_range.
    void setXml(xmlpp::Element* parent);

private:
    std::uint64_t _uid = 0;
    std::string _iconPath;
    std::string _extension;
    LocalString _title;
    LocalString _helpPath;
};

} // namespace ZemTree
