#include "Progress.h"

#include <unistd.h>

#include <cstdio>

Progress::Progress() : m_IsTerminal(isatty(STDERR_FILENO) != 0) {}

Progress::~Progress()
{
    Clear();
}

void Progress::Show(const std::string& text)
{
    if (m_IsTerminal) {
        std::fprintf(stderr, "\r\x1b[K%s", text.c_str());
        std::fflush(stderr);
        m_IsShown = true;
    }
}

void Progress::Clear()
{
    if (m_IsShown) {
        std::fputs("\r\x1b[K", stderr);
        std::fflush(stderr);
        m_IsShown = false;
    }
}
