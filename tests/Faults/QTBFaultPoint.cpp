#include "QTBFaultPoint.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <unordered_set>

#include "CATBaseUnknown.h"
#include "CATInstantiateComponent.h"

namespace {

// The implementation and interface objects that are alive. Written so that the leak detection does not take this for
// the one who holds them.
std::unordered_set<std::uintptr_t>& LiveObjects()
{
    static std::unordered_set<std::uintptr_t> s_Objects;
    return s_Objects;
}

} // namespace

void QTBFaultPoint::Arm(Points points, int n, Kind kind)
{
    s_bArmed = true;
    s_bRecords = false;
    s_Points = points;
    s_Kind = kind;
    s_Operation.clear();
    s_bDoesNothing = false;
    s_PointsBefore = n - 1;
    s_Struck.clear();
    s_pError = nullptr;
    s_bFactoryRefused = false;
}

void QTBFaultPoint::ArmToRecord(Points points)
{
    Arm(points, 1, FAILS);
    s_bRecords = true;
    s_Places.clear();
}

void QTBFaultPoint::ArmOperation(const std::string& operation, bool bDoesNothing, int callsBefore)
{
    Arm(CALLS, callsBefore + 1, FAILS);
    s_Operation = operation;
    s_bDoesNothing = bDoesNothing;
}

void QTBFaultPoint::Disarm()
{
    s_bArmed = false;
}

bool QTBFaultPoint::Strikes(Points points, const char* name)
{
    if (s_Points != points || s_OperationDepth == 0 || (s_ServiceDepth > 0 && points != ALLOCATIONS)) {
        return false;
    }
    if (s_bRecords) {
        const Unseen unseen;
        // What allocates is a container most often, in calls of its own.
        s_Places.push_back(WhereFrom(points == ALLOCATIONS ? 20 : 14));
        return false;
    }
    const bool isMeant = s_Operation.empty() ? s_Struck.empty() : s_Operation == name;
    if (!isMeant || s_PointsBefore-- > 0) {
        return false;
    }
    s_PointsBefore = 0;
    s_Struck = name;
    if (points == ALLOCATIONS) {
        const Unseen unseen;
        s_CallerCount = ::backtrace(s_Callers, MOST_CALLERS);
    }
    return true;
}

std::size_t QTBFaultPoint::WhereFrom(int depth)
{
    void* callers[MOST_CALLERS];
    const int count = ::backtrace(callers, std::min(depth, MOST_CALLERS));
    std::size_t number = 0;
    for (int i = 0; i < count; ++i) {
        number = number * 31 + std::hash<void*>()(callers[i]);
    }
    return number;
}

std::string QTBFaultPoint::DescribeStruckAllocation()
{
    std::string text;
    for (int i = 0; i < s_CallerCount; ++i) {
        Dl_info info = {};
        if (::dladdr(s_Callers[i], &info) == 0 || info.dli_sname == nullptr) {
            continue;
        }
        int status = 0;
        const std::unique_ptr<char, decltype(&std::free)> pName(
            abi::__cxa_demangle(info.dli_sname, nullptr, nullptr, &status), &std::free);
        const std::string name = pName != nullptr ? pName.get() : info.dli_sname;
        // What the language's library and this program do is not of interest.
        if (name.find("std::") == std::string::npos && name.find("QTBFault") == std::string::npos &&
            name.find("operator new") == std::string::npos && name.find("testing::") == std::string::npos) {
            text += (text.empty() ? "" : " < ") + name.substr(0, name.find('('));
        }
    }
    return text;
}

HRESULT QTBFaultPoint::Result()
{
    if (s_bDoesNothing) {
        return S_OK;
    }
    if (s_Kind == FAILS) {
        return E_FAIL;
    }
    auto* pError = new CATInternalError("FaultERR_1", "QTBFault");
    s_pError = pError;
    return CATError::GetReturn(2, pError, nullptr, __FILE__, __LINE__);
}

std::vector<CATBaseUnknown*> QTBFaultPoint::GetLiveComponents()
{
    std::vector<CATBaseUnknown*> components;
    for (const std::uintptr_t hidden : LiveObjects()) {
        auto* pObject = reinterpret_cast<CATBaseUnknown*>(~hidden);
        if (pObject->GetImpl() == pObject) {
            components.push_back(pObject);
        }
    }
    return components;
}

void* QTBFaultPoint::FindReal(const void* pReplacement)
{
    Dl_info info = {};
    void* pReal =
        ::dladdr(pReplacement, &info) != 0 && info.dli_sname != nullptr ? ::dlsym(RTLD_NEXT, info.dli_sname) : nullptr;
    if (pReal == nullptr || pReal == pReplacement) {
        std::fprintf(stderr, "A service of the base library is replaced that is not there.\n");
        std::abort();
    }
    return pReal;
}

// What follows stands in the place of the platform's.

void* CATBaseUnknown::operator new(std::size_t size)
{
    void* pMemory = ::operator new(size);
    const QTBFaultPoint::Unseen unseen;
    LiveObjects().insert(~reinterpret_cast<std::uintptr_t>(pMemory));
    return pMemory;
}

void CATBaseUnknown::operator delete(void* pMemory)
{
    LiveObjects().erase(~reinterpret_cast<std::uintptr_t>(pMemory));
    ::operator delete(pMemory);
}

HRESULT CATBaseUnknown::QueryInterface(const IID& iid, void** ppv)
{
    using Query = HRESULT (*)(CATBaseUnknown*, const IID&, void**);
    static const auto s_pReal =
        reinterpret_cast<Query>(::dlsym(RTLD_NEXT, "_ZN14CATBaseUnknown14QueryInterfaceERK3IIDPPv"));
    if (QTBFaultPoint::StrikesQuery()) {
        *ppv = nullptr;
        return E_NOINTERFACE;
    }
    return s_pReal(this, iid, ppv);
}

HRESULT CATInstantiateComponent(const char* lateTypeName, const IID& iid, void** ppv)
{
    using Instantiate = HRESULT (*)(const char*, const IID&, void**);
    static const auto s_pReal =
        reinterpret_cast<Instantiate>(QTBFaultPoint::FindReal(reinterpret_cast<const void*>(&CATInstantiateComponent)));
    return QTBFaultPoint::Service("CATInstantiateComponent",
                                  [&] { return QTBFaultPoint::Factory(s_pReal(lateTypeName, iid, ppv)); });
}
