#include "core/tree/NodePathHelper.h"

#include "core/tree/Node.h"

#include <vector>

namespace ZemTree {

namespace {

int hexValue(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// The nodes from the root down to `node`, both included.
std::vector<const Node*> getLineage(const Node* node)
{
    std::vector<const Node*> lineage;
    for (; node != nullptr; node = node->getParent())
        lineage.push_back(node);
    return std::vector<const Node*>(lineage.rbegin(), lineage.rend());
}

} // namespace

std::string NodePathHelper::escapeId(const std::string& id)
{
    if (id.empty())
        return "%";
    std::string step;
    step.reserve(id.size());
    for (const char c : id) {
        if (c == '%')
            step += "%25";
        else if (c == '/')
            step += "%2F";
        else
            step += c;
    }
    if (step == "." || step == "..")
        step.replace(0, 1, "%2E");
    return step;
}

bool NodePathHelper::unescapeId(const std::string& step, std::string& id)
{
    id.clear();
    if (step == "%")
        return true;
    if (step.empty())
        return false;
    for (std::size_t i = 0; i < step.size(); ++i) {
        if (step[i] != '%') {
            id += step[i];
            continue;
        }
        if (i + 2 >= step.size())
            return false;
        const int high = hexValue(step[i + 1]);
        const int low = hexValue(step[i + 2]);
        if (high < 0 || low < 0)
            return false;
        id += static_cast<char>(high * 16 + low);
        i += 2;
    }
    return true;
}

std::string NodePathHelper::getPath(const Node* from, const Node* to)
{
    if (from == nullptr || to == nullptr)
        return std::string();
    if (from == to)
        return ".";

    const std::vector<const Node*> fromLineage = getLineage(from);
    const std::vector<const Node*> toLineage = getLineage(to);
    if (fromLineage.front() != toLineage.front())
        return std::string();

    std::size_t common = 0;
    while (common + 1 < fromLineage.size() && common + 1 < toLineage.size()
           && fromLineage[common + 1] == toLineage[common + 1])
        ++common;

    std::string path;
    for (std::size_t i = common + 1; i < fromLineage.size(); ++i)
        path += path.empty() ? ".." : "/..";
    for (std::size_t i = common + 1; i < toLineage.size(); ++i) {
        const Node* step = toLineage[i];
        // Ids are unique among siblings only by convention: a path that reads back to another node is no path.
        if (toLineage[i - 1]->findChild(step->getId()) != step)
            return std::string();
        if (!path.empty())
            path += '/';
        path += escapeId(step->getId());
    }
    return path;
}

Node* NodePathHelper::getTarget(Node* from, const std::string& path)
{
    if (from == nullptr || path.empty())
        return nullptr;

    Node* current = from;
    std::size_t start = 0;
    while (true) {
        const std::size_t end = path.find('/', start);
        const std::string step = path.substr(start, end == std::string::npos ? std::string::npos : end - start);
        if (step == "..") {
            current = current->getParent();
        }
        else if (step != ".") {
            std::string id;
            if (!unescapeId(step, id))
                return nullptr;
            current = current->findChild(id);
        }
        if (current == nullptr || end == std::string::npos)
            return current;
        start = end + 1;
    }
}

} // namespace ZemTree
