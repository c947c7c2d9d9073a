#pragma once

namespace ZemTree {

// Two-language texts of the views: each array holds the English then the Russian text,
// read as `array[lng::language]`.
class TreePresentersLocalization {
public:
    TreePresentersLocalization() = delete;

    static const char* const ContactCollectionEditor_title[2];
    static const char* const formulaEditorWindowTitle[2];
    static const char* const formulaSource[2];
    static const char* const resetValue[2];
    static const char* const add[2];
    static const char* const edit[2];
    static const char* const inContact_Number[2];
    static const char* const inContact_Mode[2];
    static const char* const inContact_Start[2];
    static const char* const inContact_Duration[2];
};

} // namespace ZemTree
