#include "contacts/ContactMode.h"

#include "core/tree/EnumLimiter.h"
#include "core/tree/LocalString.h"
#include "core/tree/TreeLocalization.h"

namespace ZemTree {

const std::string ContactMode::OFF = "OFF";
const std::string ContactMode::NoLoad = "NoLoad";
const std::string ContactMode::SC = "SC";
const std::string ContactMode::Pause = "Pause";
const std::string ContactMode::RPO = "RPO";
const std::string ContactMode::RPV = "PRV";

std::shared_ptr<EnumLimiter> ContactMode::getDefaultHardwareOutLimiter()
{
    static const std::shared_ptr<EnumLimiter> limiter = std::make_shared<EnumLimiter>();
    if (limiter->empty()) {
        const struct {
            const std::string& value;
            const char* key;
        } rows[] = {
            {OFF, "InContactMode.Off"},     {NoLoad, "InContactMode.NoLoad"}, {SC, "InContactMode.SC"},
            {Pause, "InContactMode.Pause"}, {RPO, "InContactMode.RPO"},       {RPV, "InContactMode.RPV"},
        };
        for (const auto& row : rows)
            limiter->addItem(row.value, LocalString(std::string(lng::Tree::get(row.key))));
    }
    return limiter;
}

} // namespace ZemTree
