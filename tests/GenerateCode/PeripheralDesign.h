#pragma once

#include "GenerateCode/GeneratedFile.h"
#include "GenerateCode/SectionedText.h"
#include "GenerateCode/TextEngine.h"
#include "MadeGenerator.h"

#include <gtest/gtest.h>

#include <QMap>

#include <deque>
#include <memory>

namespace ChipLoom {

/// What a design could say about one instance, put together by hand, and the composed templates to write it into.
class PeripheralDesign : public testing::Test
{
protected:
    static QString prefixOf(const QString &folder) { return folder.toLower(); }

    /// A composed template; `file` is "main.c", or "lm_config.c" and the like for those that carry the family's name.
    static QString composed(const QString &folder, const QString &file)
    {
        const bool common = file == "main.c";
        const TextRead read =
            readSourceText(":/srcode/" + folder + '/' + (common ? file : prefixOf(folder) + '_' + file));
        EXPECT_TRUE(read.ok) << qPrintable(read.error);
        return toText(read.text);
    }

    void set(const QMap<QString, QString> &values)
    {
        for (auto value = values.begin(); value != values.end(); ++value) {
            RefParameter parameter;
            parameter.Name = value.key();
            parameter.CurrentValue = value.value();
            m_parameters.append(parameter);
        }
    }

    void place(const QString &signal, const QString &pin, const QString &gpioMode = "GPIO_MODE_MUX",
               const QString &ioMode = "MuxOutputPushPull")
    {
        SignalsGPIOSetting setting;
        setting.signalName = signal;
        setting.signalInPinName = pin;
        setting.InPinName = pin;
        setting.signalIOMode = ioMode;
        const QList<QPair<QString, QString>> values{{"GPIO mode", gpioMode}, {"Pull type", "GPIO_PULL_UP"}};
        for (const auto &[caption, value] : values) {
            RefParameter info;
            info.Comment_EN = caption;
            info.CurrentValue = value;
            setting.signalPinGPIOInfoList.append(info);
        }
        m_settings.push_back(setting);

        GPIO_Pin_Define_Info define;
        define.Name = pin;
        const QString port = pin.mid(1, 1), number = pin.mid(2);
        define.GPIO_x = "GPIO" + port;
        define.GPIO_Pin_x = "GPIO_PINS_" + number;
        define.GPIO_PinSource_x = "GPIO_PINS_SOURCE" + number;
        define.SCFG_GPIO_x = "SCFG_PORT_SOURCE_GPIO" + port;
        define.SCFG_PINS_SOURCE_x = "SCFG_PINS_SOURCE" + number;
        define.pinSignalMuxInfoList = {{signal, "GPIO_MUX_1"}};
        m_defines.push_back(define);
    }

    void request(const QString &name)
    {
        DMARequest made;
        made.requestName = name;
        m_requests.push_back(made);
    }

    void enableVector(const QString &instance, const QString &handler)
    {
        MCUNVICSetting setting;
        setting.enabledFlag = true;
        setting.relatedIPNameList = QStringList{instance};
        setting.HandlerName = handler;
        m_vectors.push_back(setting);
    }

    void forget()
    {
        m_parameters.clear();
        m_settings.clear();
        m_defines.clear();
        m_requests.clear();
        m_vectors.clear();
    }

    template <typename Record> static QList<Record *> pointers(std::deque<Record> &records)
    {
        QList<Record *> list;
        for (Record &record : records)
            list.append(&record);
        return list;
    }

    std::unique_ptr<DeclaredGenerator> generator(ZV32MCUSERIALS series, const QString &instance, bool valid = true)
    {
        auto made = peripheralGenerator(series, instance);
        if (!made)
            return nullptr;
        made->SetIPValidFlag(valid);
        made->SetRefParameterList(m_parameters);
        made->SetAllSignalsGPIOSettingList(pointers(m_settings));
        made->SetGPIOPinDefineInfo(pointers(m_defines));
        made->SetValidDMARequestList(pointers(m_requests));
        made->SetAllNVICSettingList(pointers(m_vectors));
        made->SetIPSignalGroupInfoList(m_groups);
        return made;
    }

    /// The function of an instance, cut out of the template and written from the design.
    QString function(const QString &folder, ZV32MCUSERIALS series, const QString &instance)
    {
        const std::string text = toCode(composed(folder, "lm_config.c"));
        const SectionSpan span = findSection(text, instance.toLower() + " function");
        EXPECT_TRUE(span.found());
        SectionedText section{std::string(between(text, span.start, span.start + span.length))};
        EXPECT_TRUE(editFunction(*generator(series, instance), section, &DeclaredGenerator::GenerateCode_lm_config_c));
        return toText(section.joined());
    }

    /// The text of the handlers with the branches of an instance resolved.
    static QString handlers(const QString &text, DeclaredGenerator &generator)
    {
        SectionedText sections(toCode(text));
        EXPECT_TRUE(generator.GenerateCode_interrupt_int_c(sections, generator.questions().spotsIn(sections)));
        return toText(sections.joined());
    }

    QList<RefParameter> m_parameters;
    std::deque<SignalsGPIOSetting> m_settings;
    std::deque<GPIO_Pin_Define_Info> m_defines;
    std::deque<DMARequest> m_requests;
    std::deque<MCUNVICSetting> m_vectors;
    QList<IPSignalGroupInfo> m_groups;
};

} // namespace ChipLoom
