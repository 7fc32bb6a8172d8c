#pragma once

#include "Design/Design.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "ScriptedPrompt.h"

#include <gtest/gtest.h>

namespace ChipLoom {

/// A design of a device of the sample database, changed by settings as the command line takes them.
class DeviceFixture : public ::testing::Test
{
protected:
    void open(const QString &device, const QString &package)
    {
        ASSERT_TRUE(design.NewDesign(device.left(8), device, package)) << device.toStdString();
        design.scheduler().drain();
    }
    DesignAnswer apply(const QString &setting)
    {
        const DesignAnswer answer = design.apply(*DesignChange::fromSetting(setting));
        design.scheduler().drain();
        return answer;
    }
    /// "(absent)" where the present modes have no such parameter.
    QString value(const QString &instance, const QString &name) const
    {
        const RefParameter *parameter = design.peripheral(instance)->parameters().parameter(name);
        return parameter ? parameter->CurrentValue : QStringLiteral("(absent)");
    }

    AppPaths paths{QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR)};
    ScriptedPrompt prompt;
    Design design{paths, prompt};
};

} // namespace ChipLoom
