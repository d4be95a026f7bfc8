#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "CATError.h"

class CATBaseUnknown;

// Lets one call go wrong that the library makes while an operation runs: the n-th call of an operation of an interface,
// of a service of the base library, the n-th query for an interface, or the n-th allocation. The program that runs
// these faults is built with ties and services that ask here before they do their work (see
// tools/generate-fault-points).
//
//     QTBFaultPoint::Arm(QTBFaultPoint::CALLS, n, QTBFaultPoint::FAILS);
//     const HRESULT hr = spNode->GetParent(&spParent);
//     QTBFaultPoint::Disarm();
//
// What a service does by itself is its own affair: calls from inside a service are no points, and neither is the call
// with which the operation is begun.
class QTBFaultPoint
{
public:
    enum Points
    {
        CALLS,
        QUERIES,
        // Of memory. Those of services are points too, and each raises std::bad_alloc.
        ALLOCATIONS
    };
    enum Kind
    {
        // Without an error object. A query always ends like that.
        FAILS,
        // With the error FaultERR_1 of the catalog "QTBFault".
        FAILS_WITH_ERROR
    };

    // The n-th point from here on goes wrong, the first being 1.
    static void Arm(Points points, int n, Kind kind);
    // Nothing goes wrong; GetPlaces tells afterwards where something could have.
    static void ArmToRecord(Points points);
    // The points passed since then, in order, each by a number that stands for the calls that led to it.
    static const std::vector<std::size_t>& GetPlaces() { return s_Places; }
    // A named operation goes wrong, from the given call on: "QTBSchemaUtil::GetClassAttr". Succeeds without having done
    // anything when bDoesNothing.
    static void ArmOperation(const std::string& operation, bool bDoesNothing, int callsBefore = 0);
    static void Disarm();
    // Whether a factory has told of a lack of memory by its result since it was armed.
    static bool FactoryRefused() { return s_bFactoryRefused; }
    static Points GetPoints() { return s_Points; }
    // Between the two nothing is struck or recorded, and it is armed as before.
    static void Hold() { s_bArmed = false; }
    static void Release() { s_bArmed = true; }

    // What went wrong, empty when nothing did: "QTBINode::GetPdmClass", "QueryInterface" for a query.
    static const std::string& GetStruck() { return s_Struck; }
    // The functions that an allocation that went wrong came from, innermost first.
    static std::string DescribeStruckAllocation();
    // The error that went with it, null when it had none.
    static const CATError* GetError() { return s_pError; }

    // An operation of an interface that the library answers for a late type. Of several operations of one name each has
    // its own slot.
    struct OfferedOperation
    {
        std::string lateType;
        std::string name;
        int slot;
        // For the text only.
        std::string parameters;
    };
    static const std::vector<OfferedOperation> s_OfferedOperations;

    // The operation that was begun last while it was armed: one that ran in no other one.
    static const std::string& GetBegunName() { return s_BegunName; }
    static int GetBegunSlot() { return s_BegunSlot; }

    // A call of an operation of an interface.
    template <class Call>
    static HRESULT Operation(const char* name, int slot, Call call)
    {
        if (s_bArmed && Strikes(CALLS, name)) {
            return Result();
        }
        Begin(name, slot);
        const Depth depth(&s_OperationDepth);
        return call();
    }
    // The same for an operation that has no result; it is never struck.
    template <class Call>
    static decltype(auto) OperationWithoutResult(const char* name, int slot, Call call)
    {
        Begin(name, slot);
        const Depth depth(&s_OperationDepth);
        return call();
    }
    // pGiven is an error that the service takes over from its caller, in failure too.
    template <class Call>
    static HRESULT Service(const char* name, Call call, CATError* pGiven = nullptr)
    {
        if (s_bArmed && Strikes(CALLS, name)) {
            CATError::GetReturn(2, pGiven, nullptr, __FILE__, __LINE__);
            return Result();
        }
        const Depth depth(&s_ServiceDepth);
        return call();
    }
    template <class Call>
    static decltype(auto) ServiceWithoutResult(Call call)
    {
        const Depth depth(&s_ServiceDepth);
        return call();
    }
    static HRESULT Factory(HRESULT hr)
    {
        s_bFactoryRefused = s_bFactoryRefused || hr == E_OUTOFMEMORY;
        return hr;
    }
    static bool StrikesQuery() { return s_bArmed && Strikes(QUERIES, "QueryInterface"); }
    static bool StrikesAllocation() { return s_bArmed && Strikes(ALLOCATIONS, "operator new"); }

    // The implementation objects of all components that are alive, also of those that nothing leads to any more.
    static std::vector<CATBaseUnknown*> GetLiveComponents();

    // What happens while it lives is no point: what the program does for itself.
    class Unseen
    {
    public:
        Unseen() : m_bWasArmed(s_bArmed) { s_bArmed = false; }
        Unseen(const Unseen&) = delete;
        Unseen& operator=(const Unseen&) = delete;
        ~Unseen() { s_bArmed = m_bWasArmed; }

    private:
        bool m_bWasArmed;
    };

    // The function behind one that this program has put in its place.
    static void* FindReal(const void* pReplacement);

private:
    struct Depth
    {
        explicit Depth(int* pDepth) : m_pDepth(pDepth) { ++*m_pDepth; }
        Depth(const Depth&) = delete;
        Depth& operator=(const Depth&) = delete;
        ~Depth() { --*m_pDepth; }
        int* m_pDepth;
    };

    static void Begin(const char* name, int slot)
    {
        if (s_bArmed && s_OperationDepth == 0) {
            s_BegunName = name;
            s_BegunSlot = slot;
        }
    }
    static bool Strikes(Points points, const char* name);
    static std::size_t WhereFrom(int depth);
    static HRESULT Result();

    inline static bool s_bArmed = false;
    inline static bool s_bRecords = false;
    inline static std::vector<std::size_t> s_Places;
    inline static Points s_Points = CALLS;
    inline static Kind s_Kind = FAILS;
    inline static std::string s_Operation;
    inline static bool s_bDoesNothing = false;
    inline static int s_PointsBefore = 0;
    inline static std::string s_Struck;
    inline static const CATError* s_pError = nullptr;
    static constexpr int MOST_CALLERS = 32;
    inline static void* s_Callers[MOST_CALLERS] = {};
    inline static int s_CallerCount = 0;
    inline static bool s_bFactoryRefused = false;
    inline static std::string s_BegunName;
    inline static int s_BegunSlot = 0;
    inline static int s_OperationDepth = 0;
    inline static int s_ServiceDepth = 0;
};
