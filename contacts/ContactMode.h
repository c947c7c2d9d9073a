#pragma once

#include <memory>
#include <string>

namespace ZemTree {

class EnumLimiter;

// The modes a contact element can have in a test sequence. The texts are what a ContactElement stores; `RPV`
// is stored as "PRV", and files carry that text.
class ContactMode {
public:
    ContactMode() = delete;

    static const std::string OFF;
    static const std::string NoLoad;
    static const std::string SC;
    static const std::string Pause;
    static const std::string RPO;
    static const std::string RPV;

    // One shared limiter of all modes, in the order above, each item shown by its text of the tree core in the
    // language current when the limiter is filled. Made on the first call and kept for the life of the process;
    // a limiter found empty is filled again. The thread of the tree only.
    static std::shared_ptr<EnumLimiter> getDefaultHardwareOutLimiter();
};

} // namespace ZemTree
