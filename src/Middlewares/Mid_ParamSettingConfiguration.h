#pragma once

#include "Design/IP_ParamSettingConfiguration.h"

namespace ChipLoom {

/// The parameters of a middleware follow the rules of those of a peripheral; the copies of other modules' parameters
/// that some of them need (the Ethernet controller's for lwIP, those of the two-wire buses for their application layer)
/// are `otherParameters`.
using Mid_ParamSettingConfiguration = IP_ParamSettingConfiguration;

} // namespace ChipLoom
