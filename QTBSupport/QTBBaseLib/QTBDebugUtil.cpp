#include "QTBDebugUtil.h"

#include <iostream>
#include <string>

namespace {

constexpr int LEVEL_OF_SCOPES = 2;

int s_Depth = 0;

} // namespace

int QTBDebugUtil::s_GlobalTraceLevel = 0;
unsigned char QTBDebugUtil::s_bGlobalDebugStatus = FALSE;
QTBDebugUtil::Observer QTBDebugUtil::s_pObserver = nullptr;

void QTBDebugUtil::Enter(const char* name, unsigned char bAlways)
{
    if (bAlways == FALSE && s_GlobalTraceLevel < LEVEL_OF_SCOPES) {
        return;
    }
    m_pName = name;
    std::cout << std::string(static_cast<std::size_t>(s_Depth), ' ') << "-> " << name << std::endl;
    ++s_Depth;
}

void QTBDebugUtil::Leave() const
{
    --s_Depth;
    if (s_bGlobalDebugStatus != FALSE) {
        std::cout << std::string(static_cast<std::size_t>(s_Depth), ' ') << "<- " << m_pName << std::endl;
    }
}
