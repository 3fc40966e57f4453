#include "host/shell/function_help.h"

#include "host/shell/function_documents.h"

#include <QtCore/QRegularExpression>

namespace HostShell {

namespace {

using Kelvaris::FunctionRegistry;
using Kelvaris::RegisteredFunction;

// Pictures lie beside the document, where the program does not find them.
QString withoutPictures(QString text)
{
    static const QRegularExpression picture{QStringLiteral("^!\\[.*\\]\\(.*\\)\n+"),
                                            QRegularExpression::MultilineOption};
    return text.remove(picture).trimmed();
}

// "(files, output[, title])" requires files and output.
QStringList requiredIn(const QString& signature)
{
    QStringList names;
    const QString inner = signature.section(QLatin1Char{'('}, 1).section(QLatin1Char{'['}, 0, 0);
    static const QRegularExpression name{QStringLiteral("\\w+")};
    for (auto matches = name.globalMatch(inner); matches.hasNext();)
        names.append(matches.next().captured());
    return names;
}

QString signatureByNumbers(const RegisteredFunction& function)
{
    QString arguments;
    for (int i = 1; i <= function.maximum; ++i) {
        const bool isOptional = i > function.minimum;
        const QString separator = i == 1 ? QString{} : QStringLiteral(", ");
        arguments += (isOptional ? QStringLiteral("[") : QString{}) + separator + QStringLiteral("argument%1").arg(i);
    }
    arguments += QString{function.maximum - function.minimum, QLatin1Char{']'}};
    return QStringLiteral("%1(%2)").arg(QString::fromStdString(function.name), arguments);
}

FunctionHelp makeHelp(const QString& name, const QString& signature, const QString& markdown)
{
    return {name, signature, requiredIn(signature), markdown};
}

std::vector<FunctionHelp> helpOfTheHostsOwn()
{
    return {
        makeHelp(QStringLiteral("print"), QStringLiteral("print(text)"),
                 QStringLiteral("Writes a line to the output: its arguments, with blanks between them.")),
        makeHelp(QStringLiteral("exit"), QStringLiteral("exit([status])"),
                 QStringLiteral("Ends the script here. `hollerwick-host run` ends with the status, 0 when none is "
                                "given.")),
    };
}

} // namespace

FunctionHelp helpOf(const RegisteredFunction& function)
{
    const QString name = QString::fromStdString(function.name);
    const FunctionDocument* document = findFunctionDocument(function.name);
    if (document == nullptr)
        return makeHelp(name, signatureByNumbers(function), {});
    return makeHelp(name, name + QString::fromStdString(document->arguments),
                    withoutPictures(QString::fromStdString(document->text)));
}

std::vector<FunctionHelp> helpOfAll()
{
    std::vector<FunctionHelp> all;
    for (const RegisteredFunction& function : FunctionRegistry::instance().functions())
        all.push_back(helpOf(function));
    for (FunctionHelp& help : helpOfTheHostsOwn())
        all.push_back(std::move(help));
    return all;
}

} // namespace HostShell
