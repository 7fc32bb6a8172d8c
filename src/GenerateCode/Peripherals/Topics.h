#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace ChipLoom {

class DeclaredGenerator;

// What a kind of peripheral writes, as a table: its topics in the order of the lines of its template.

/// A question to the design, asked for one instance.
struct TopicTest
{
    enum class Kind {
        Always,
        AnyTrue,   ///< one of the parameters is "TRUE"
        OneOf,     ///< the parameter has one of the values
        Other,     ///< the parameter is there and has none of the values
        NoneOf,    ///< the parameter has none of the values, or is not there
        Given,     ///< one of the parameters is there and not empty
        Requested, ///< one of the instance's DMA requests has a channel
        Placed,    ///< one of the instance's signals stands on a pin
        OnCrystal, ///< one of them stands on PD0 or PD1 where these share their pins with the crystal
    };
    Kind kind = Kind::Always;
    QStringList names;
    QStringList values;
    std::vector<TopicTest> also;         ///< hold beside it
    std::vector<TopicTest> instead = {}; ///< each of them is enough by itself
};

TopicTest isTrue(const QStringList &parameters);
inline TopicTest isTrue(const char *parameter)
{
    return isTrue(QStringList{QString::fromLatin1(parameter)});
}
TopicTest isOneOf(const char *parameter, const QStringList &values);
TopicTest isOther(const char *parameter, const QStringList &values);
TopicTest isNoneOf(const char *parameter, const QStringList &values);
/// One of the parameters is there.
TopicTest isGiven(const QStringList &parameters);
inline TopicTest isGiven(const QString &parameter)
{
    return isGiven(QStringList{parameter});
}
inline TopicTest isGiven(const char *parameter)
{
    return isGiven(QString::fromLatin1(parameter));
}
/// Requests by what follows the instance in their name: "_TX"; an empty text is the request of the instance's name.
TopicTest isRequested(const QStringList &suffixes);
/// Signals by their short name: "TX".
TopicTest isPlaced(const QStringList &shortNames);
TopicTest standsOnCrystal();
TopicTest both(TopicTest first, TopicTest second);
TopicTest either(TopicTest first, TopicTest second);

/// One argument of a call, or the right side of an assignment.
struct TopicValue
{
    enum class Kind {
        Parameter, ///< the current value of a parameter, empty or not
        OrSample,  ///< the same; what stands in the template where the parameter is empty or not there
        Sample,    ///< what stands in the template
        Computed,
    };
    using Function = std::function<QString(const DeclaredGenerator &)>;

    TopicValue(const char *parameter) : text(QString::fromLatin1(parameter)) {}
    TopicValue(QString parameter) : text(std::move(parameter)) {}
    TopicValue(Kind valueKind, const char *parameter) : kind(valueKind), text(QString::fromLatin1(parameter)) {}

    Kind kind = Kind::Parameter;
    QString text;
    Function function;
};

/// The argument of the template, as the instance in front.
inline const TopicValue Keep{TopicValue::Kind::Sample, ""};
inline TopicValue orSample(const char *parameter)
{
    return {TopicValue::Kind::OrSample, parameter};
}

TopicValue computed(TopicValue::Function function);

/// One edit of an instance's code.
struct Topic
{
    enum class Form {
        Pin,         ///< the section "<target> pin" of the signal `signalNames[0]`
        Declaration, ///< a section that stays, without a blank line behind it, if one of the signals stands on a pin or
                     ///< where there are none if the test holds
        Remap,       ///< the section "gpio gmux" of the signals
        Section,     ///< a section that stays if the test holds, then edited by `inner`
        Call,        ///< the arguments of one call
        Line,        ///< one line with a call that goes if the test fails
        Assignment,  ///< the right side of "<target> = sample;"
        Rewritten,   ///< a call in whose place a function writes; if it writes nothing the line goes
        Remarks,     ///< the section "interrupt remarks"
        Edit,        ///< what a function makes of all that the other topics of the list have written; one at most, for
                     ///< all instances
    };
    using Function = bool (*)(const DeclaredGenerator &, std::string &text);
    using Rewrite = std::string (*)(const DeclaredGenerator &, const QStringList &samples);

    Form form = Form::Section;
    QString name;   ///< of the topic, told where template and generator are out of step
    QString target; ///< key of a pin, name of a section or function, left side of an assignment
    TopicTest test;
    QList<TopicValue> values;
    QStringList signalNames; ///< short: "TX"
    std::vector<Topic> inner;
    Function edit = nullptr;
    Rewrite rewrite = nullptr;
    QString when; ///< feature that an instance needs to have this topic at all; empty for all instances

    /// The section that a topic about one edits.
    QString section() const { return form == Form::Pin ? target + QLatin1String(" pin") : target; }

    /// The same topic for instances that have a feature, as "smartcard", "a|b & !c" or, for an entry of a list of the
    /// instance, "channels:3". The template of an instance without it lacks the text, which is then no fault.
    Topic onlyWhen(const QString &feature) &&
    {
        when = feature;
        return std::move(*this);
    }
};

Topic pin(const QString &key, const QString &shortName);
/// The structure that the pin blocks share: the section "gpio declaration", in front of other declarations.
Topic pinDeclaration(const QStringList &shortNames);
/// The same where it is the only one.
Topic onlyPinDeclaration(const QStringList &shortNames);
/// Another structure among declarations. Those that all may go stand in a section of their own, which leaves one blank
/// line behind the last that stays, and nothing where none does.
Topic declaration(const char *name, const char *section, TopicTest test);
/// The section "gpio defaults".
Topic pinDefaults(const QStringList &shortNames);
Topic remap(const QStringList &shortNames);
/// The section "gpio pd01 gmux".
Topic crystalPins();
Topic section(const char *name, const QString &section, TopicTest test, std::vector<Topic> inner = {});
Topic call(const char *name, const char *function, QList<TopicValue> arguments);
Topic line(const char *name, const char *function, TopicTest test, QList<TopicValue> arguments);
Topic assignment(const char *name, const char *member, TopicValue value);
/// The call has a number of arguments, which the function gets as they stand in the template.
Topic rewritten(const char *name, const char *function, int arguments, Topic::Rewrite rewrite);
Topic interruptRemarks();
Topic edit(const char *name, Topic::Function function);
/// A section named by the parameter that keeps it.
Topic interruptEnable(const char *parameter);

void append(std::vector<Topic> &topics, const std::vector<Topic> &more);

/// A section of the instance in its handlers: instance + suffix, kept if the test holds.
struct InterruptBranch
{
    QString suffix;
    TopicTest test;
    QString when = {};
};

/// What one kind of peripheral writes.
struct PeripheralTopics
{
    const char *kind;            ///< instance name without its number: "USART"
    std::vector<Topic> function; ///< of the section "<instance> function" of the configuration source
    std::vector<Topic> mainCall = {};
    std::vector<InterruptBranch> branches = {};
    QStringList globalSignals = {}; ///< signals without the instance in their name
    TopicTest haveCode = {};        ///< what it takes, beside being in use, to have a function
    std::vector<Topic> header = {}; ///< of the section "<instance> function" of the header
    bool whenOff = false;           ///< a peripheral that is off has a function too, in which it is put away
    QString when = {};              ///< feature without which an instance has no function at all, as Topic::when
};

const PeripheralTopics &accTopics();
const PeripheralTopics &canTopics();
const PeripheralTopics &dacTopics();
const PeripheralTopics &emacTopics();
const PeripheralTopics &qspiTopics();
const PeripheralTopics &sdioTopics();
const PeripheralTopics &spimTopics();
const PeripheralTopics &usbfsTopics();
const PeripheralTopics &usbOtgTopics();
/// The pins that the banks of the external memory controller share; as "XMC" in front of them.
const PeripheralTopics &xmcPinTopics();
const PeripheralTopics &xmcNorTopics();
const PeripheralTopics &xmcNandTopics();
const PeripheralTopics &xmcCardTopics();
const PeripheralTopics &xmcSdramTopics();
const PeripheralTopics &usartTopics();
const PeripheralTopics &spiTopics();
const PeripheralTopics &i2sTopics();
const PeripheralTopics &i2cTopics();
const PeripheralTopics &adcTopics();
const PeripheralTopics &adcCommonTopics();
const PeripheralTopics &dvpTopics();
const PeripheralTopics &exintTopics();
const PeripheralTopics &ertcTopics();
const PeripheralTopics &rtcTopics();
const PeripheralTopics &wdtTopics();
const PeripheralTopics &wwdtTopics();
const PeripheralTopics &crcTopics();
const PeripheralTopics &cmpTopics();
const PeripheralTopics &irtmrTopics();
const PeripheralTopics &scfgTopics();
const PeripheralTopics &pwcTopics();
const PeripheralTopics &debugTopics();
const PeripheralTopics &tmrTopics();

} // namespace ChipLoom
