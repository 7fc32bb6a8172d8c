#pragma once

#include "GenerateCode/Generatecode_IP.h"
#include "GenerateCode/Peripherals/InstanceQuestions.h"
#include "GenerateCode/SectionedText.h"

#include <span>

namespace ChipLoom {

class ZV32PLLConfig;

/// Writes the code of one peripheral instance, as the table of topics of its kind says, into the texts of the common
/// files. An instance that the design does not use, or does not have, is asked too: it takes its sections out. Works on
/// the instance's section alone, so that names repeated from instance to instance stay unambiguous. Every answer is
/// false where text and generator are out of step.
class DeclaredGenerator : public GenerateCode_IP
{
public:
    /// `features` are what a stem of the instance has: a topic then stands or falls with them. Without features it is
    /// left out where the template of the instance lacks its text.
    DeclaredGenerator(ZV32MCUSERIALS series, InstanceQuestions &questions, QStringList features = {});

    QString instanceName() const { return m_IPName; }
    void SetClockConfig(const ZV32PLLConfig *clock) { m_clockConfigForm = clock; }

    /// The section "<instance> function" of the configuration source, which stands there at this spot.
    bool GenerateCode_lm_config_c(SectionedText &text, const SectionedText::Spot &section);
    /// The same section of the header.
    bool GenerateCode_lm_config_h(SectionedText &text, const SectionedText::Spot &section);
    /// The same section of `main.c`.
    bool GenerateCode_main_c(SectionedText &text, const SectionedText::Spot &section);
    /// The sections of this instance in the handlers of the interrupt file, which stand there at these spots.
    bool GenerateCode_interrupt_int_c(SectionedText &text, const SectionedText::Spots &spots);
    /// Whether the instance leaves code at all: its functions stand in the order of calls only then.
    bool HaveCode() const;
    void SetRefParameterList(const QList<RefParameter> &list) override;
    /// Found by the tests and arguments of topics alone, not by `Get_DefineString_Param`.
    void SetDerivedValues(DerivedValues values);

    // ---- For the topics ----

    InstanceQuestions &questions() const { return m_questions; }
    /// The current value of a parameter, by its number; null where there is none.
    const QString *asked(int number) const;
    /// Whether a DMA request of that name has a channel.
    bool isRequested(const QString &request) const;
    bool isOn() const { return m_IPValidFlag; }
    /// Whether the instance has the topic at all.
    bool hasTopic(const Topic &topic, bool standsInTemplate) const;
    /// Whether the stem has features: names joined by "&" and "|", "!" turns one round.
    bool hasFeatures(const QString &when) const;
    const ZV32PLLConfig *clock() const { return m_clockConfigForm; }

protected:
    const RefParameter *parameter(const QString &name) const override;

private:
    bool inOwnSection(SectionedText &text, const SectionedText::Spot &section, const std::vector<Topic> &topics);

    const ZV32PLLConfig *m_clockConfigForm = nullptr; // not owned
    const PeripheralTopics &m_topics;
    QStringList m_features;
    InstanceQuestions &m_questions;
    DerivedValues m_derivedValues;
    mutable InstanceQuestions::Places m_places;
};

/// The section of an instance: "usart1 function".
QString functionSection(const QString &instanceName);

/// The instance name without its number: "USART" for "USART1", "XMC_NANDFlash" for itself.
QString kindOfInstance(const QString &instanceName);

/// What the generator of an instance is made of.
struct GeneratorParts
{
    InstanceQuestions *questions = nullptr; ///< null where the kind has no generator
    QStringList features = {};
};
GeneratorParts generatorParts(ZV32MCUSERIALS series, const QString &instanceName);

/// The tables of all kinds.
std::span<const PeripheralTopics *const> allPeripheralTopics();
/// The table of a kind, or null.
const PeripheralTopics *peripheralTopics(const QString &kind);

} // namespace ChipLoom
