#pragma once

namespace ZemTree {

// The four states of every result. The numbers are part of the design: 0 means that nothing is wrong, and the
// fold of multi results and the presenters compare them.
enum class ResultState : int {
    Ok = 0,    // measured and accepted, or measured with no assessment to judge it
    NotOk = 1, // measured and rejected
    Error = 2, // the measured data are unusable
    Empty = 3, // nothing measured yet (shown as not tested)
};

// The key of the state's word in lng::TreeRelay: "result_ok", "result_notOk", "result_empty", and
// "result_error" for Error and for any number that is none of the four.
const char* getResultStateKey(ResultState state);

} // namespace ZemTree
