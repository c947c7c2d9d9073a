#pragma once

#include <string>

namespace ZemTree {

class Node;

// Relative paths between nodes of one tree, built from ids so that they survive saving and loading:
// "." is the node itself, ".." its parent, and steps are joined by "/", as in "../Settings/Iset".
//
// An id is written with '%' escapes so that any id fits in one step: '%' is "%25", '/' is "%2F", an id that
// is "." or ".." has its first dot written "%2E", and an empty id is written "%". Inside a step '%' must be
// followed by two hex digits or stand alone as the whole step.
class NodePathHelper {
public:
    NodePathHelper() = delete;

    // The path that leads from `from` to `to`: "." when they are the same node, otherwise ".." steps up to the
    // nearest common ancestor and then the ids down to `to`. "" when either is null, the nodes are in different
    // trees, or the path would not lead back to `to` because a sibling before it on the way has the same id.
    static std::string getPath(const Node* from, const Node* to);

    // The node `path` leads to from `from`, or null when `from` is null, the path is empty or malformed
    // (an empty step, a bad escape), a ".." goes above the root, or a step names no child. A step "." stays.
    // A step whose id several siblings share goes to the first of them.
    static Node* getTarget(Node* from, const std::string& path);

    // The step text of one id, and back; unescapeId gives false for a malformed step.
    static std::string escapeId(const std::string& id);
    static bool unescapeId(const std::string& step, std::string& id);
};

} // namespace ZemTree
