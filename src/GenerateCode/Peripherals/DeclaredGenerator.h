#pragma once

#include "GenerateCode/PeripheralGenerator.h"
#include "GenerateCode/Peripherals/InstanceQuestions.h"

#include <span>

namespace ChipLoom {

/// The generator of every peripheral whose code is a table of topics. They work on the instance's section alone, so
/// that names repeated from instance to instance stay unambiguous.
class DeclaredGenerator : public PeripheralGenerator
{
public:
    /// `features` are what a stem of the instance has: a topic then stands or falls with them. Without features it is
    /// left out where the template of the instance lacks its text.
    DeclaredGenerator(ZV32MCUSERIALS series, InstanceQuestions &questions, QStringList features = {});

    bool GenerateCode_lm_config_c(SectionedText &text) override;
    bool GenerateCode_lm_config_h(SectionedText &text) override;
    bool GenerateCode_main_c(SectionedText &text) override;
    bool GenerateCode_interrupt_int_c(SectionedText &text) override;
    bool HaveCode() const override;
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
    const ZV32PLLConfig *clock() const { return m_clockConfigForm; }

private:
    bool hasFeatures(const QString &when) const;
    bool inOwnSection(SectionedText &text, const std::vector<Topic> &topics);

    const PeripheralTopics &m_topics;
    QStringList m_features;
    InstanceQuestions &m_questions;
    DerivedValues m_derivedValues;
    mutable InstanceQuestions::Places m_places;
};

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
