#pragma once

#include <map>
#include <string>
#include <vector>

#include "QTBItemDialog.h"
#include "ShellContext.h"

// The dialog of items while one command of the shell runs: filled in from the values given with the command, else by
// the person at the terminal, else only printed.
class ShellItemDialog
{
public:
    // Values as NAME=VALUE; a name that two pages have counts for the first.
    ShellItemDialog(ShellContext& context, const ShellArguments& values);
    ShellItemDialog(const ShellItemDialog&) = delete;
    ShellItemDialog& operator=(const ShellItemDialog&) = delete;
    ~ShellItemDialog();

    // Whether the command asked and got no values.
    bool IsGivenUp() const { return m_IsGivenUp; }

    // Raises HostError when a value was given that no dialog asked for.
    void RequireAllUsed(const std::string& command) const;

private:
    bool Fill(std::vector<QTBItemDialog::Page>* pPages);
    bool FillFromValues(std::vector<QTBItemDialog::Page>* pPages);
    bool FillFromTerminal(std::vector<QTBItemDialog::Page>* pPages) const;
    void Print(const std::vector<QTBItemDialog::Page>& pages) const;

    ShellContext& m_Context;
    std::map<std::string, std::string> m_Values;
    std::string m_Problem;
    bool m_HasAsked = false;
    bool m_IsGivenUp = false;
};
