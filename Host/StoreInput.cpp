#include "StoreInput.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>

#include <fmt/format.h>

#include "HostSession.h"
#include "QTBItemDialog.h"
#include "QTBStoreImportReport.h"
#include "QTBXmlUtil.h"
#ifdef QTB_WITH_STEP
#include "CATStepAssembly.h"
#include "StepConverter.h"
#endif

namespace fs = std::filesystem;

namespace {

bool IsStepFile(const std::string& path)
{
    std::string extension = fs::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension == ".stp" || extension == ".step";
}

// Of other text the store would keep something else.
void RequireText(const std::string& text)
{
    const bool hasControls = std::any_of(
        text.begin(), text.end(), [](unsigned char c) { return c < ' ' && c != '\t' && c != '\n' && c != '\r'; });
    if (hasControls || !StoreInput::IsUtf8(text)) {
        throw HostError(ExitCode::Usage,
                        fmt::format("{} is no UTF-8 text without control characters", CATUnicodeString(text).View()));
    }
}

} // namespace

bool StoreInput::IsUtf8(const std::string& text)
{
    // What is none is repaired.
    return CATUnicodeString(text).View() == text;
}

std::string StoreInput::GetUser(const std::string& name)
{
    if (!name.empty()) {
        RequireText(name);
        return name;
    }
    if (const passwd* pEntry = getpwuid(geteuid()); pEntry != nullptr) {
        return pEntry->pw_name;
    }
    // A user that the machine does not know, as in a container.
    for (const char* variable : {"USER", "LOGNAME"}) {
        if (const char* pName = std::getenv(variable); pName != nullptr && *pName != '\0') {
            return pName;
        }
    }
    throw HostError(ExitCode::Usage, "the name of the user is not known; give it with --user");
}

std::pair<CATUnicodeString, CATUnicodeString> StoreInput::ParseAttribute(const std::string& text)
{
    RequireText(text);
    const std::size_t equals = text.find('=');
    if (equals == 0 || equals == std::string::npos) {
        throw HostError(ExitCode::Usage, text + ": an attribute is given as NAME=VALUE");
    }
    return {CATUnicodeString(std::string_view(text).substr(0, equals)),
            CATUnicodeString(std::string_view(text).substr(equals + 1))};
}

CATUnicodeString StoreInput::MakeAttributesXml(const std::vector<std::string>& attributes)
{
    std::vector<QTBItemDialog::Field> fields;
    for (const std::string& text : attributes) {
        const auto [usName, usValue] = ParseAttribute(text);
        fields.push_back({usName, usName, usValue});
    }
    return QTBItemDialog::MakeXml(fields);
}

std::vector<CATIDOMDocument_var> StoreInput::ReadAnswers(const std::string& path)
{
    std::vector<CATIDOMDocument_var> answers;
    if (!fs::exists(path)) {
        throw HostError(ExitCode::BadInput, path + " does not exist");
    }
    if (IsStepFile(path)) {
#ifdef QTB_WITH_STEP
        try {
            for (const StepConverter::Answer& answer : StepConverter::ToAnswers(CATReadStepAssembly(path))) {
                HostSession::Require(QTBXmlUtil::GetTrustedDomDocument(answer.xml, &answers.emplace_back()),
                                     ExitCode::Failure, path);
            }
        } catch (const HostError&) {
            throw;
        } catch (const std::runtime_error& error) {
            throw HostError(ExitCode::BadInput, error.what());
        }
        return answers;
#else
        throw HostError(ExitCode::BadInput, path + ": " + NO_STEP_READER);
#endif
    }
    HostSession::Require(QTBXmlUtil::GetDomDocumentFromFile(path.c_str(), &answers.emplace_back()), ExitCode::BadInput,
                         "answer");
    return answers;
}

std::string StoreInput::Describe(const std::string& input, const QTBStoreImportReport& report)
{
    std::string text =
        fmt::format("{}: {} objects and {} relations added, {} and {} changed, {} items unchanged, {} deleted, "
                    "{} files taken in, {} left out\n",
                    input, report.objectsAdded, report.relationsAdded, report.objectsChanged, report.relationsChanged,
                    report.itemsUnchanged, report.itemsDeleted, report.filesAdded, report.itemsLeftOut);
    for (const CATUnicodeString& usItem : report.leftOut) {
        text += fmt::format("  left out: {}\n", usItem.View());
    }
    return text;
}
