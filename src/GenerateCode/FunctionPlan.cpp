#include "GenerateCode/FunctionPlan.h"

#include "GenerateCode/Peripherals/DeclaredGenerator.h"

#include <QDebug>

#include <algorithm>

namespace ChipLoom {

namespace {

bool isStatement(const Topic &topic)
{
    return topic.form == Topic::Form::Call || topic.form == Topic::Form::Line || topic.form == Topic::Form::Rewritten ||
           topic.form == Topic::Form::Assignment;
}

Statement statementOf(const Topic &topic)
{
    return {topic.form == Topic::Form::Assignment ? Statement::Kind::Assignment : Statement::Kind::Call, topic.target,
            topic.form == Topic::Form::Assignment ? 1 : topic.values.size()};
}

} // namespace

FunctionPlan::FunctionPlan(const TextCut &text, const std::vector<Topic> &topics, const DeclaredGenerator &generator)
    : m_text(text)
{
    std::vector<bool> taken(text.pieces().size());
    for (const Topic &topic : topics) {
        if (topic.form == Topic::Form::Edit) {
            Q_ASSERT(!m_edit && topic.when.isEmpty());
            m_edit = &topic;
            continue;
        }
        const int piece = placeOf(topic, taken);
        if (!generator.hasTopic(topic, piece >= 0))
            continue;
        if (piece < 0) {
            m_missing = &topic;
            return;
        }
        taken[static_cast<size_t>(piece)] = true;
        addStep(topic, static_cast<size_t>(piece), generator);
    }
    std::sort(m_steps.begin(), m_steps.end(), [](const Step &a, const Step &b) { return a.start < b.start; });
}

void FunctionPlan::addStep(const Topic &topic, size_t number, const DeclaredGenerator &generator)
{
    InstanceQuestions &questions = generator.questions();
    const TextCut::Piece &piece = m_text.pieces()[number];
    const bool isCall = piece.kind == TextCut::Piece::Kind::Call;
    const int argumentsStart = piece.bodyStart + (isCall ? piece.name.size() + 1 : 0);
    const auto firstArgument = static_cast<int>(m_arguments.size());
    int from = argumentsStart;
    for (int i = 0; isStatement(topic) && i < topic.values.size(); ++i) {
        const TopicValue &value = topic.values.at(i);
        const bool isParameter = value.kind == TopicValue::Kind::Parameter || value.kind == TopicValue::Kind::OrSample;
        const int start = indexOf(m_text.text(), toCode(piece.samples.at(i)), from);
        from = start + piece.samples.at(i).size();
        m_arguments.push_back(
            {value.kind, isParameter ? questions.numberOf(value.text) : -1, start, from, &value.function});
    }
    m_steps.push_back({piece.start, piece.bodyStart, argumentsStart, piece.bodyEnd(), piece.end(), topic.form,
                       firstArgument, static_cast<int>(m_arguments.size()) - firstArgument,
                       TopicQuestion(topic.test, questions), partOf(topic, number, generator)});
}

std::unique_ptr<const FunctionPlan::Part> FunctionPlan::partOf(const Topic &topic, size_t number,
                                                               const DeclaredGenerator &generator) const
{
    const bool isBlock = topic.form == Topic::Form::Pin || topic.form == Topic::Form::Remap;
    const bool isSection = topic.form == Topic::Form::Section;
    if (!isBlock && !isSection && !topic.rewrite && topic.signalNames.isEmpty())
        return nullptr;
    const QStringList signalNames = generator.questions().fullSignals(topic.signalNames);
    const std::shared_ptr<const TextCut> block = isBlock ? m_text.body(number, true) : nullptr;
    return std::make_unique<const Part>(
        Part{topic.form == Topic::Form::Pin ? &PinBlock::of(*block) : nullptr, numbersOfSignals(signalNames),
             isSection ? std::make_unique<FunctionPlan>(*m_text.body(number, true), topic.inner, generator) : nullptr,
             signalNames, block, topic.rewrite, m_text.pieces()[number].samples});
}

// The first piece that no other topic has.
int FunctionPlan::placeOf(const Topic &topic, const std::vector<bool> &taken) const
{
    const std::vector<TextCut::Piece> &pieces = m_text.pieces();
    const Statement wanted = statementOf(topic);
    const QString section = topic.section();
    for (size_t i = 0; i < pieces.size(); ++i) {
        const TextCut::Piece &piece = pieces[i];
        const bool fits = isStatement(topic)
                              ? piece.is(wanted) && (topic.form != Topic::Form::Line || piece.end() > piece.bodyEnd())
                              : piece.kind == TextCut::Piece::Kind::Section && piece.name == section;
        if (fits && !taken[i])
            return static_cast<int>(i);
    }
    return -1;
}

const FunctionPlan &FunctionPlan::of(const TextCut &text, const std::vector<Topic> &topics,
                                     const DeclaredGenerator &generator)
{
    return text.derived<FunctionPlan>(&topics, [&] { return std::make_unique<FunctionPlan>(text, topics, generator); });
}

bool FunctionPlan::write(const DeclaredGenerator &generator, std::string &text) const
{
    if (m_missing) {
        qWarning("%s: %s does not find '%s' in the template", qPrintable(generator.instanceName()),
                 qPrintable(m_missing->name), qPrintable(m_missing->section()));
        return false;
    }
    const size_t start = text.size();
    int copied = 0;
    for (const Step &step : m_steps) {
        text.append(m_text.between(copied, step.start));
        if (!writeStep(step, generator, text))
            return false;
        copied = step.end;
    }
    text.append(m_text.between(copied, length(m_text.text())));
    if (!m_edit)
        return true;
    std::string written = text.substr(start);
    text.resize(start);
    const bool edited = m_edit->edit(generator, written);
    text += written;
    return edited;
}

bool FunctionPlan::writeStep(const Step &step, const DeclaredGenerator &generator, std::string &text) const
{
    const std::string_view body = m_text.between(step.bodyStart, step.bodyEnd);
    switch (step.form) {
    case Topic::Form::Pin:
        return generator.GenerateCode_SignalPIN(step.part->signalNumbers.front(), *step.part->pin, text);
    case Topic::Form::Declaration:
        if (step.part)
            generator.GenerateCode_GPIO_init_struct(step.part->signalNumbers, body, false, text);
        else if (step.question.holds(generator))
            text.append(body);
        return true;
    case Topic::Form::Remap:
        return generator.GenerateCode_GPIOGMUX(step.part->signalNames, *step.part->block, text);
    case Topic::Form::Section:
        return writeSection(step, generator, text);
    case Topic::Form::Call:
    case Topic::Form::Line:
        writeCall(step, generator, text);
        return true;
    case Topic::Form::Rewritten:
        writeRewritten(step, generator, text);
        return true;
    case Topic::Form::Assignment:
        writeAssignment(step, generator, text);
        return true;
    case Topic::Form::Remarks:
        generator.GenerateCode_Peripheral_interrupt_remarks(generator.instanceName(), body, text);
        return true;
    case Topic::Form::Edit:
        break;
    }
    return false;
}

// One blank line stands behind what stays of a section, whatever went at its end.
bool FunctionPlan::writeSection(const Step &step, const DeclaredGenerator &generator, std::string &text) const
{
    if (!step.question.holds(generator))
        return true;
    const size_t start = text.size();
    if (!step.part->inner->write(generator, text))
        return false;
    while (text.size() > start && text.back() == '\n')
        text.pop_back();
    if (text.size() > start)
        text += "\n\n";
    return true;
}

// A line that its topic does not want goes with the blanks in front and the line breaks behind.
void FunctionPlan::writeCall(const Step &step, const DeclaredGenerator &generator, std::string &text) const
{
    if (!step.question.holds(generator))
        return;
    const bool isLine = step.form == Topic::Form::Line;
    if (isLine)
        text += "  ";
    text.append(m_text.between(isLine ? step.bodyStart : step.start, step.argumentsStart));
    for (int i = 0; i < step.argumentCount; ++i) {
        if (i > 0)
            text += ", ";
        writeArgument(m_arguments[static_cast<size_t>(step.firstArgument + i)], generator, text);
    }
    text += ");";
    if (isLine)
        text += "\n\n";
    else
        text.append(m_text.between(step.bodyEnd, step.end));
}

void FunctionPlan::writeArgument(const Argument &argument, const DeclaredGenerator &generator, std::string &text) const
{
    const QString *current = argument.parameter < 0 ? nullptr : generator.asked(argument.parameter);
    if (argument.kind == TopicValue::Kind::Computed)
        append(text, (*argument.function)(generator));
    else if (argument.kind == TopicValue::Kind::Sample ||
             (argument.kind == TopicValue::Kind::OrSample && (!current || current->isEmpty())))
        text.append(m_text.between(argument.sampleStart, argument.sampleEnd));
    else if (current)
        append(text, *current);
}

void FunctionPlan::writeRewritten(const Step &step, const DeclaredGenerator &generator, std::string &text) const
{
    const std::string calls = step.part->rewrite(generator, step.part->samples);
    if (calls.empty())
        return;
    text.append(m_text.between(step.start, step.bodyStart));
    text += calls;
    text.append(m_text.between(step.bodyEnd, step.end));
}

// Without a value the sample is the driver's own default.
void FunctionPlan::writeAssignment(const Step &step, const DeclaredGenerator &generator, std::string &text) const
{
    text.append(m_text.between(step.start, step.bodyStart));
    const size_t start = text.size();
    writeArgument(m_arguments[static_cast<size_t>(step.firstArgument)], generator, text);
    text.append(m_text.between(text.size() == start ? step.bodyStart : step.bodyEnd, step.end));
}

} // namespace ChipLoom
