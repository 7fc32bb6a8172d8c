#include "GenerateCode/Peripherals/Topics.h"

namespace ChipLoom {

namespace {

Topic topic(Topic::Form form, const char *name, const QString &target)
{
    Topic made;
    made.form = form;
    made.name = QString::fromLatin1(name);
    made.target = target;
    return made;
}

} // namespace

TopicValue computed(TopicValue::Function function)
{
    TopicValue value(TopicValue::Kind::Computed, "");
    value.function = std::move(function);
    return value;
}

TopicTest isTrue(const QStringList &parameters)
{
    return {TopicTest::Kind::AnyTrue, parameters, {}, {}};
}

TopicTest isOneOf(const char *parameter, const QStringList &values)
{
    return {TopicTest::Kind::OneOf, {QString::fromLatin1(parameter)}, values, {}};
}

TopicTest isOther(const char *parameter, const QStringList &values)
{
    return {TopicTest::Kind::Other, {QString::fromLatin1(parameter)}, values, {}};
}

TopicTest isNoneOf(const char *parameter, const QStringList &values)
{
    return {TopicTest::Kind::NoneOf, {QString::fromLatin1(parameter)}, values, {}};
}

TopicTest isGiven(const QStringList &parameters)
{
    return {TopicTest::Kind::Given, parameters, {}, {}};
}

TopicTest isRequested(const QStringList &suffixes)
{
    return {TopicTest::Kind::Requested, suffixes, {}, {}};
}

TopicTest isPlaced(const QStringList &shortNames)
{
    return {TopicTest::Kind::Placed, shortNames, {}, {}};
}

TopicTest standsOnCrystal()
{
    return {TopicTest::Kind::OnCrystal, {}, {}, {}};
}

TopicTest both(TopicTest first, TopicTest second)
{
    first.also.push_back(std::move(second));
    return first;
}

TopicTest either(TopicTest first, TopicTest second)
{
    first.instead.push_back(std::move(second));
    return first;
}

Topic pin(const QString &key, const QString &shortName)
{
    Topic made = topic(Topic::Form::Pin, "GenerateCode_SignalPIN", key);
    made.signalNames = QStringList{shortName};
    return made;
}

Topic pinDeclaration(const QStringList &shortNames)
{
    Topic made = topic(Topic::Form::Declaration, "GenerateCode_GPIO_init_struct", QStringLiteral("gpio declaration"));
    made.signalNames = shortNames;
    return made;
}

Topic declaration(const char *name, const char *section, TopicTest test)
{
    Topic made = topic(Topic::Form::Declaration, name, QString::fromLatin1(section));
    made.test = std::move(test);
    return made;
}

Topic onlyPinDeclaration(const QStringList &shortNames)
{
    return section("GenerateCode_GPIO_init_struct", QStringLiteral("gpio declaration"), isPlaced(shortNames));
}

Topic pinDefaults(const QStringList &shortNames)
{
    return section("GenerateCode_GPIO_init_struct", QStringLiteral("gpio defaults"), isPlaced(shortNames));
}

Topic remap(const QStringList &shortNames)
{
    Topic made = topic(Topic::Form::Remap, "GenerateCode_GPIOGMUX", QStringLiteral("gpio gmux"));
    made.signalNames = shortNames;
    made.when = QStringLiteral("remap");
    return made;
}

Topic crystalPins()
{
    return section("GenerateCode_PD0_PD1_GMUX", QStringLiteral("gpio pd01 gmux"), standsOnCrystal()).onlyWhen("remap");
}

Topic section(const char *name, const QString &section, TopicTest test, std::vector<Topic> inner)
{
    Topic made = topic(Topic::Form::Section, name, section);
    made.test = std::move(test);
    made.inner = std::move(inner);
    return made;
}

Topic call(const char *name, const char *function, QList<TopicValue> arguments)
{
    Topic made = topic(Topic::Form::Call, name, QString::fromLatin1(function));
    made.values = std::move(arguments);
    return made;
}

Topic line(const char *name, const char *function, TopicTest test, QList<TopicValue> arguments)
{
    Topic made = topic(Topic::Form::Line, name, QString::fromLatin1(function));
    made.test = std::move(test);
    made.values = std::move(arguments);
    return made;
}

Topic assignment(const char *name, const char *member, TopicValue value)
{
    Topic made = topic(Topic::Form::Assignment, name, QString::fromLatin1(member));
    made.values = {std::move(value)};
    return made;
}

Topic rewritten(const char *name, const char *function, int arguments, Topic::Rewrite rewrite)
{
    Topic made = topic(Topic::Form::Rewritten, name, QString::fromLatin1(function));
    for (int i = 0; i < arguments; ++i)
        made.values.append(Keep);
    made.rewrite = rewrite;
    return made;
}

Topic interruptRemarks()
{
    return topic(Topic::Form::Remarks, "GenerateCode_Peripheral_interrupt_remarks",
                 QStringLiteral("interrupt remarks"));
}

Topic edit(const char *name, Topic::Function function)
{
    Topic made = topic(Topic::Form::Edit, name, {});
    made.edit = function;
    return made;
}

Topic interruptEnable(const char *parameter)
{
    return section("GenerateCode_Interrupt_enable_sub1", QString::fromLatin1(parameter), isTrue(parameter));
}

void append(std::vector<Topic> &topics, const std::vector<Topic> &more)
{
    topics.insert(topics.end(), more.begin(), more.end());
}

} // namespace ChipLoom
