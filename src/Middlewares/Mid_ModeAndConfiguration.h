#pragma once

#include "Design/ModuleConfiguration.h"
#include "Middlewares/Mid_ParamSettingConfiguration.h"

namespace ChipLoom {

/// One middleware of the open design: a module without pins, in use as soon as one of its modes is on. Conflicts with
/// other modules are notes, and errors where both cannot run; they never take a choice away.
class Mid_ModeAndConfiguration : public ModuleConfiguration
{
    Q_OBJECT
public:
    Mid_ModeAndConfiguration(Design &design, PeripheralsBaseInfo info, std::shared_ptr<const PeripheralTree> tree);

protected:
    bool isInUse() const override;
    ModeNote currentNote() const override;
};

} // namespace ChipLoom
