#pragma once

#include "CATDataType.h"
#include "QTBBaseLibExport.h"

// Trace scope of one operation, and the switches of the debug output.
class QTBBASELIB_API QTBDebugUtil
{
public:
    // Opens a scope under the operation's full name. At trace level 2 and above, with the debug status on, entry and
    // exit are written to the debug output, indented by depth; otherwise a scope costs the test of a flag.
    // The flag forces the two lines at any trace level.
    QTBDebugUtil(const char* name, unsigned char bAlways)
    {
        if (s_bGlobalDebugStatus != FALSE) [[unlikely]] {
            Enter(name, bAlways);
        }
    }
    QTBDebugUtil(const QTBDebugUtil&) = delete;
    QTBDebugUtil& operator=(const QTBDebugUtil&) = delete;
    ~QTBDebugUtil()
    {
        if (m_pName != nullptr) [[unlikely]] {
            Leave();
        }
    }

    // TRUE when debug output is wanted.
    static unsigned char GetDebugStatus() { return s_bGlobalDebugStatus; }

    // 0 and 1: messages only; 2: entry and exit of every operation too; 3: also the extra output of rep nodes that
    // lost their PDM node.
    static int s_GlobalTraceLevel;
    static unsigned char s_bGlobalDebugStatus;

    // Told of every check that fails, with its text, and of every line of debug output that is written, without; kind
    // is one of the OBSERVED texts. Null unless a program of tests wants to know.
    using Observer = void (*)(const char* kind, const char* text, const char* file, int line);
    static Observer s_pObserver;
    static constexpr const char* OBSERVED_ASSERTION = "assertion";
    static constexpr const char* OBSERVED_INTERFACE = "interface";
    static constexpr const char* OBSERVED_RESULT = "result";
    static constexpr const char* OBSERVED_TRACE = "trace";

    static void Observe(const char* kind, const char* text, const char* file, int line)
    {
        if (s_pObserver != nullptr) [[unlikely]] {
            s_pObserver(kind, text, file, line);
        }
    }

private:
    void Enter(const char* name, unsigned char bAlways);
    void Leave() const;

    const char* m_pName = nullptr;
};
