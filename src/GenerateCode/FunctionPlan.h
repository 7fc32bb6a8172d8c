#pragma once

#include "GenerateCode/Peripherals/InstanceQuestions.h"
#include "GenerateCode/Peripherals/Topics.h"
#include "GenerateCode/PinBlock.h"

#include <memory>
#include <vector>

namespace ChipLoom {

/// Which topic writes which piece of the code of an instance, found once. A topic has the first piece that it fits and
/// that no topic before it has; what lies between stays as it is.
class FunctionPlan : public TextCut::Derived
{
public:
    /// For the instance of the generator; the text and the topics outlive the plan.
    FunctionPlan(const TextCut &text, const std::vector<Topic> &topics, const DeclaredGenerator &generator);
    /// The plan that is kept with the text, made when it is first asked for: every generator that writes this text is
    /// of the same instance with the same features.
    static const FunctionPlan &of(const TextCut &text, const std::vector<Topic> &topics,
                                  const DeclaredGenerator &generator);

    /// Appends the code as the design of the generator wants it. False where the text lacks the place of a topic.
    bool write(const DeclaredGenerator &generator, std::string &text) const;

private:
    struct Argument
    {
        TopicValue::Kind kind;
        int parameter;
        int sampleStart, sampleEnd; ///< what stands in the text
        const TopicValue::Function *function;
    };
    /// What few steps need.
    struct Part
    {
        const PinBlock *pin; ///< or null
        SignalNumbers signalNumbers;
        std::unique_ptr<FunctionPlan> inner; ///< of a section
        QStringList signalNames;
        std::shared_ptr<const TextCut> block; ///< of a pin or a remap group
        Topic::Rewrite rewrite;
        QStringList samples; ///< of what is rewritten
    };
    /// Small, for all of them are read in each generation.
    struct Step
    {
        int start, bodyStart, argumentsStart, bodyEnd, end; ///< in the text; arguments of a call
        Topic::Form form;
        int firstArgument, argumentCount; ///< in `m_arguments`
        TopicQuestion question;
        std::unique_ptr<const Part> part; ///< or null
    };

    int placeOf(const Topic &topic, const std::vector<bool> &taken) const;
    void addStep(const Topic &topic, size_t piece, const DeclaredGenerator &generator);
    std::unique_ptr<const Part> partOf(const Topic &topic, size_t piece, const DeclaredGenerator &generator) const;
    bool writeStep(const Step &step, const DeclaredGenerator &generator, std::string &text) const;
    bool writeSection(const Step &step, const DeclaredGenerator &generator, std::string &text) const;
    void writeCall(const Step &step, const DeclaredGenerator &generator, std::string &text) const;
    void writeRewritten(const Step &step, const DeclaredGenerator &generator, std::string &text) const;
    void writeAssignment(const Step &step, const DeclaredGenerator &generator, std::string &text) const;
    void writeArgument(const Argument &argument, const DeclaredGenerator &generator, std::string &text) const;

    const TextCut &m_text;
    std::vector<Step> m_steps; ///< in the order of their pieces
    std::vector<Argument> m_arguments;
    const Topic *m_missing = nullptr;
    const Topic *m_edit = nullptr; ///< of all that the others have written
};

} // namespace ChipLoom
