#include "Project/Toolchains/LinkerSettings.h"

#include "Project/ProjectFiles.h"
#include "Project/Toolchains/ProjectLists.h"

#include <QCoreApplication>

namespace ChipLoom {

namespace {

/// How one size stands in a file.
struct SizeRow
{
    const char *expression;
    const char *anySize; ///< the same with any value, which group 1 is
    const char *before;  ///< what is written before the value
    const char *behind;
    int digits; ///< of the value at least
};

struct LinkerRows
{
    SizeRow stack, heap;
};

const LinkerRows GccRows{
    {R"(_Min_Stack_Size(\s*)=(\s*)0x(\d*);)", R"(_Min_Stack_Size\s*=\s*([^;\s]*)\s*;)", "_Min_Stack_Size = 0x", ";", 1},
    {R"(_Min_Heap_Size(\s*)=(\s*)0x(\d*);)", R"(_Min_Heap_Size\s*=\s*([^;\s]*)\s*;)", "_Min_Heap_Size = 0x", ";", 1}};
const LinkerRows IarRows{
    {R"(define symbol __ICFEDIT_size_cstack__(\s*)=(\s*)0x(\d*);)", R"(__ICFEDIT_size_cstack__\s*=\s*([^;\s]*)\s*;)",
     "define symbol __ICFEDIT_size_cstack__\t= 0x", ";", 1},
    {R"(define symbol __ICFEDIT_size_heap__(\s*)=(\s*)0x(\d*);)", R"(__ICFEDIT_size_heap__\s*=\s*([^;\s]*)\s*;)",
     "define symbol __ICFEDIT_size_heap__\t\t= 0x", ";", 1}};
const LinkerRows MdkRows{
    {R"(Stack_Size(\s*)EQU(\s*)0x(\d{8}))", R"(Stack_Size\s*EQU\s*(\S+))", "Stack_Size      EQU     0x", "", 8},
    {R"(Heap_Size(\s*)EQU(\s{5})0x(\d{8}))", R"(Heap_Size\s*EQU\s*(\S+))", "Heap_Size       EQU     0x", "", 8}};

void setSize(QString &text, const SizeRow &row, quint32 size, const QString &name, const QString &file,
             BuilderAccount &account)
{
    const QString value = QString::number(size, 16).toUpper().rightJustified(row.digits, QLatin1Char('0'));
    if (replaceFirst(text, QLatin1String(row.expression),
                     QLatin1String(row.before) + value + QLatin1String(row.behind)))
        return;
    const QRegularExpressionMatch match = usedOnce(QLatin1String(row.anySize)).match(text);
    bool number = false;
    if (!match.hasMatch())
        account.notes.append(
            QCoreApplication::translate("Project", "%1 sets no size of the %2, so it was left as it is")
                .arg(file, name));
    else if (match.captured(1).toUInt(&number, 0) != size || !number)
        account.notes.append(QCoreApplication::translate("Project",
                                                         "%1 keeps its size of the %2, %3, since it is not written in "
                                                         "decimal digits; set it there to %4")
                                 .arg(file, name, match.captured(1), hexSize(size)));
}

} // namespace

bool configLinkerSizes(const ProjectOrder &order, BuilderAccount &account)
{
    const QString file = order.isMdk() ? order.startupFile() : order.linkerFile();
    const QString path = order.projectFullPath + QLatin1Char('/') + file;
    ProjectText read = readProjectText(path);
    if (!read.ok) {
        account.detail = read.error;
        return false;
    }
    const LinkerRows &rows = order.isMdk() ? MdkRows : order.isIar() ? IarRows : GccRows;
    setSize(read.text, rows.stack, order.minStackSize, QCoreApplication::translate("Project", "stack"), file, account);
    setSize(read.text, rows.heap, order.minHeapSize, QCoreApplication::translate("Project", "heap"), file, account);
    return writeProjectText(order, path, read.text, account);
}

} // namespace ChipLoom
