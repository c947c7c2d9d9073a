#pragma once

#include <string>

namespace ZemTree {

// Names of the sources a test set can take its time base or start from. Other libraries of the system store
// and compare them; this library carries them only so that they are spelled one way everywhere. Each
// translation unit that includes the header holds its own copies, built when it is loaded.
namespace SynchronizationSources {

static const std::string None = "None";
static const std::string PowerNetwork = "PowerNetwork";
static const std::string ExternalStart = "ExternalStart";
static const std::string BinaryOutput = "BinaryOutput";
static const std::string Cable = "Cable";
static const std::string GPS = "GPS";
static const std::string PTP = "PTP";

} // namespace SynchronizationSources

} // namespace ZemTree
