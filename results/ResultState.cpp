#include "results/ResultState.h"

namespace ZemTree {

const char* getResultStateKey(ResultState state)
{
    switch (state) {
    case ResultState::Ok:
        return "result_ok";
    case ResultState::NotOk:
        return "result_notOk";
    case ResultState::Empty:
        return "result_empty";
    case ResultState::Error:
        break;
    }
    return "result_error";
}

} // namespace ZemTree
