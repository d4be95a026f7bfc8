#include "ShellItemDialog.h"

#include <algorithm>
#include <ostream>

#include <fmt/format.h>
#include <fmt/ostream.h>

#include "StoreInput.h"

ShellItemDialog::ShellItemDialog(ShellContext& context, const ShellArguments& values) : m_Context(context)
{
    for (const std::string& text : values) {
        const auto [usName, usValue] = StoreInput::ParseAttribute(text);
        m_Values[std::string(usName.View())] = usValue.View();
    }
    QTBItemDialog::SetHandler([this](std::vector<QTBItemDialog::Page>* pPages) {
        m_IsGivenUp = !Fill(pPages);
        return !m_IsGivenUp;
    });
}

ShellItemDialog::~ShellItemDialog()
{
    QTBItemDialog::SetHandler(nullptr);
}

void ShellItemDialog::RequireAllUsed(const std::string& command) const
{
    if (!m_Problem.empty()) {
        throw HostError(ExitCode::Usage, m_Problem);
    }
    if (!m_HasAsked && !m_Values.empty()) {
        throw HostError(ExitCode::Usage, command + " asks for no values; it was started without them");
    }
}

bool ShellItemDialog::Fill(std::vector<QTBItemDialog::Page>* pPages)
{
    m_HasAsked = true;
    if (!m_Values.empty()) {
        return FillFromValues(pPages);
    }
    if (m_Context.ask != nullptr) {
        return FillFromTerminal(pPages);
    }
    Print(*pPages);
    return false;
}

bool ShellItemDialog::FillFromValues(std::vector<QTBItemDialog::Page>* pPages)
{
    for (const auto& [name, value] : m_Values) {
        QTBItemDialog::Field* pField = nullptr;
        for (QTBItemDialog::Page& page : *pPages) {
            const auto found =
                std::find_if(page.fields.begin(), page.fields.end(), [&name = name](const QTBItemDialog::Field& field) {
                    return field.usAttrName.View() == name;
                });
            if (found != page.fields.end() && pField == nullptr) {
                pField = &*found;
            }
        }
        if (pField == nullptr) {
            std::string names;
            for (const QTBItemDialog::Page& page : *pPages) {
                for (const QTBItemDialog::Field& field : page.fields) {
                    names += (names.empty() ? "" : ", ") + std::string(field.usAttrName.View());
                }
            }
            m_Problem = fmt::format("the dialog does not ask for {}; it asks for {}", name, names);
            return false;
        }
        pField->usValue = CATUnicodeString(std::string_view{value});
    }
    return true;
}

bool ShellItemDialog::FillFromTerminal(std::vector<QTBItemDialog::Page>* pPages) const
{
    for (QTBItemDialog::Page& page : *pPages) {
        for (QTBItemDialog::Field& field : page.fields) {
            const std::string old(field.usValue.View());
            const std::optional<std::string> value = m_Context.ask(fmt::format(
                "{}: {}{}: ", page.usTitle.View(), field.usDisplayName.View(), old.empty() ? "" : " [" + old + "]"));
            if (!value) {
                return false;
            }
            if (!value->empty()) {
                field.usValue = CATUnicodeString(std::string_view{*value});
            }
        }
    }
    return true;
}

void ShellItemDialog::Print(const std::vector<QTBItemDialog::Page>& pages) const
{
    for (const QTBItemDialog::Page& page : pages) {
        if (!page.fields.empty()) {
            fmt::print(m_Context.out, "{}\n", page.usTitle.View());
        }
        for (const QTBItemDialog::Field& field : page.fields) {
            fmt::print(m_Context.out, "  {:<16} {}{}\n", field.usAttrName.View(), field.usDisplayName.View(),
                       field.usValue.IsEmpty() ? "" : ": " + std::string(field.usValue.View()));
        }
    }
    m_Context.out << "nothing was done; give the values behind the item, as NAME=VALUE\n";
}
