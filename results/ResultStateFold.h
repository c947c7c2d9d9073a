#pragma once

#include "results/ResultBase.h"

#include <string>

namespace ZemTree {

// Folds the states of the items of a multi result into one, in item order, starting from Ok with no message:
// Ok changes nothing; the first NotOk sets NotOk and that item's description (later NotOk items change nothing);
// Error sets Error with the item's description and stops; any other state (Empty) sets Error, keeps the message
// and stops. No item at all gives Error with no message.
class ResultStateFold {
public:
    ResultStateFold() = default;

    // Takes the next item; returns false once the fold has stopped, after which items are ignored.
    bool add(const ResultBase& item);

    ResultState getState() const { return _hasItems ? _state : ResultState::Error; }
    const std::string& getMessage() const { return _message; }

    // The fold over the values of a map (or any range of pairs whose second is a ResultBase).
    template <class Map> static ResultStateFold fold(const Map& items)
    {
        ResultStateFold folded;
        for (const auto& entry : items)
            if (!folded.add(entry.second))
                break;
        return folded;
    }

private:
    ResultState _state = ResultState::Ok;
    std::string _message;
    bool _hasItems = false;
    bool _isStopped = false;
};

} // namespace ZemTree
