#pragma once

#include <new>
#include <string_view>
#include <utility>

#include "CATError.h"
#include "CATInterface_var.h"

// While it lives, an operation of the faulty extensions (see QTB_FAULTY_OPERATION) goes wrong: on one component or, for
// an empty handle, on all; after the given number of calls that still go well. One fault at a time.
class QTBFault
{
public:
    enum Kind
    {
        // The call fails without an error object.
        Fails,
        // The call succeeds without having done anything.
        DoesNothing,
        // The call raises the error FaultERR_1 of the catalog "QTBFault".
        Raises,
        // The call ends for lack of memory.
        LacksMemory
    };

    explicit QTBFault(const char* operation, const CATBaseUnknown_var& spComponent = NULL_var, int callsBefore = 0,
                      Kind kind = Fails)
        : m_Operation(operation), m_spComponent(spComponent), m_CallsBefore(callsBefore), m_Kind(kind)
    {
        s_pCurrent = this;
    }
    QTBFault(const QTBFault&) = delete;
    QTBFault& operator=(const QTBFault&) = delete;
    ~QTBFault() { s_pCurrent = nullptr; }

    static bool Strikes(const CATBaseUnknown& extension, std::string_view operation)
    {
        if (s_pCurrent == nullptr || s_pCurrent->m_Operation != operation ||
            (s_pCurrent->m_spComponent != NULL_var && s_pCurrent->m_spComponent.Get() != extension.GetImpl())) {
            return false;
        }
        return s_pCurrent->m_CallsBefore-- <= 0;
    }
    static HRESULT Result()
    {
        if (s_pCurrent->m_Kind == Raises) {
            CATError::Throw(__FILE__, __LINE__, new CATInternalError("FaultERR_1", "QTBFault"));
        }
        if (s_pCurrent->m_Kind == LacksMemory) {
            throw std::bad_alloc();
        }
        return s_pCurrent->m_Kind == DoesNothing ? S_OK : E_FAIL;
    }

private:
    inline static QTBFault* s_pCurrent = nullptr;

    std::string_view m_Operation;
    CATBaseUnknown_var m_spComponent;
    int m_CallsBefore;
    Kind m_Kind;
};

// An operation of an extension that derives from a real one: does what that does unless a fault strikes.
#define QTB_FAULTY_OPERATION(Base, name)                                                                               \
    template <class... Arguments>                                                                                      \
    HRESULT name(Arguments&&... arguments)                                                                             \
    {                                                                                                                  \
        return QTBFault::Strikes(*this, #name) ? QTBFault::Result()                                                    \
                                               : Base::name(std::forward<Arguments>(arguments)...);                    \
    }
