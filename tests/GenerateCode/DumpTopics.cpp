// Prints what the generators of the peripherals ask of their templates, one line each, for check_templates.py:
// kind, file (c, main, h, int), sections around it (joined by "/"), form, target, number of arguments, feature.

#include "GenerateCode/Peripherals/DeclaredGenerator.h"

#include <cstdio>

using namespace ChipLoom;

namespace {

const char *formName(Topic::Form form)
{
    switch (form) {
    case Topic::Form::Pin:
        return "pin";
    case Topic::Form::Call:
    case Topic::Form::Line:
    case Topic::Form::Rewritten:
        return "call";
    case Topic::Form::Assignment:
        return "assignment";
    case Topic::Form::Edit:
        return "edit";
    default:
        return "section";
    }
}

void print(const char *kind, const char *file, const QString &around, const std::vector<Topic> &topics)
{
    for (const Topic &topic : topics) {
        std::printf("%s\t%s\t%s\t%s\t%s\t%d\t%s\n", kind, file, qPrintable(around), formName(topic.form),
                    qPrintable(topic.target), topic.values.size(), qPrintable(topic.when));
        const QString inside = around.isEmpty() ? topic.target : around + '/' + topic.target;
        print(kind, file, inside, topic.inner);
    }
}

} // namespace

int main()
{
    for (const PeripheralTopics *topics : allPeripheralTopics()) {
        std::printf("%s\town\t\tsection\tfunction\t0\t%s\n", topics->kind, qPrintable(topics->when));
        print(topics->kind, "c", {}, topics->function);
        print(topics->kind, "main", {}, topics->mainCall);
        print(topics->kind, "h", {}, topics->header);
        for (const InterruptBranch &branch : topics->branches)
            std::printf("%s\tint\t\tsection\t%s\t0\t%s\n", topics->kind, qPrintable(branch.suffix),
                        qPrintable(branch.when));
    }
}
