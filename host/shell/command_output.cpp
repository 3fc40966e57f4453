#include "host/shell/command_output.h"

#include "host/core/errors/error_words.h"
#include "host/core/text/text_view.h"
#include "host/shell/exit_status.h"
#include "host/shell/log_output.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"

#include <QtCore/QJsonDocument>

#include <cstdio>

namespace HostShell {

using Kelvaris::System::ErrorCode2;
using Kelvaris::System::FilePath2;
using Kelvaris::System::IO::OpcPackaging::opc_error_category;
using Kelvaris::System::IO::OpcPackaging::OpcError;
namespace Errors = Kelvaris::System::Errors;
namespace Text = Kelvaris::System::Text;

namespace {

QJsonObject messageObject(const std::string& sentence)
{
    return {{QStringLiteral("message"), QString::fromStdString(sentence)}};
}

int refuse(const CommandLine& line, int status, const std::string& sentence, const QJsonObject& error)
{
    complain(sentence);
    if (line.json)
        printJson(status, {{QStringLiteral("error"), error}});
    return status;
}

} // namespace

void printLine(const std::string& text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

void printJson(int status, QJsonObject value)
{
    value.insert(QStringLiteral("status"), status);
    printLine(QJsonDocument{value}.toJson(QJsonDocument::Compact).toStdString());
}

QJsonObject toJson(const ErrorCode2& error)
{
    const Errors::ErrorWords words = Errors::wordsOf(error);
    QJsonObject object = messageObject(toText(error.message()));
    object.insert(QStringLiteral("category"), QString::fromUtf8(error.category().name()));
    object.insert(QStringLiteral("code"), error.value());
    const auto insert = [&](const char* name, const std::string& text) {
        if (!text.empty())
            object.insert(QString::fromLatin1(name), QString::fromStdString(text));
    };
    insert("where", words.where);
    insert("what", words.what);
    insert("why", words.why);
    insert("mend", words.mend);
    return object;
}

int refuse(const CommandLine& line, int status, const std::string& sentence)
{
    return refuse(line, status, sentence, messageObject(sentence));
}

int refuse(const CommandLine& line, int status, const ErrorCode2& error)
{
    return refuse(line, status, toText(error.message()), toJson(error));
}

int refuse(const CommandLine& line, const Refusal& refusal)
{
    return refusal.error ? refuse(line, refusal.status, *refusal.error)
                         : refuse(line, refusal.status, refusal.sentence);
}

Refusal badInput(const ErrorCode2& error)
{
    return {ExitStatus::badInput, toText(error.message()), error};
}

int statusOf(const ErrorCode2& error)
{
    const ErrorCode2 exists{static_cast<int>(OpcError::destinationExists), opc_error_category()};
    return error == exists ? ExitStatus::outputExists : ExitStatus::badInput;
}

std::string toText(const Kelvaris::System::String2& text)
{
    return std::string{Text::narrow(text)};
}

Kelvaris::System::FilePath2 toPath(const std::string& text)
{
    return FilePath2{Text::toString2(std::string_view{text})};
}

} // namespace HostShell
