#pragma once

#include "results/ResultState.h"

#include <string>

namespace ZemTree {

// Base of every result: the state, worked out once by the constructor of the concrete result, and a message
// that overrides the state's standard text. Results are immutable and copyable; not polymorphic. Nothing listens
// to a result, so it carries no signal of its own.
class ResultBase {
public:
    const ResultState& getState() const { return _state; }
    // The message if there is one; otherwise the state's word from lng::TreeRelay in the current language.
    std::string getStateDescription() const;
    bool isEmpty() const { return _state == ResultState::Empty; }

protected:
    // Sets both fields and raises nothing.
    void _setState(ResultState state, const std::string& message);

private:
    ResultState _state = ResultState::Empty;
    std::string _stateMessage;
};

} // namespace ZemTree
