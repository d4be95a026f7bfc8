#pragma once

#include <string>

// Progress of long work on the terminal: one line of the standard error stream that is written over and cleared at the
// end. Nothing is written when that is no terminal.
class Progress
{
public:
    Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    void Show(const std::string& text);
    void Clear();

private:
    const bool m_IsTerminal;
    bool m_IsShown = false;
};
