#pragma once

#include <cassert>
#include <exception>
#include <initializer_list>
#include <vector>

#include "CATDataType.h"
#include "CATUnicodeString.h"
#include "PlatformExport.h"

// Gives an error class its name and its place below Base, so that errors can be told apart with IsAKindOf.
#define CATDeclareErrorClass(Class, Base)                                                                              \
public:                                                                                                                \
    static const char* ClassName()                                                                                     \
    {                                                                                                                  \
        return #Class;                                                                                                 \
    }                                                                                                                  \
    const char* IsA() const override                                                                                   \
    {                                                                                                                  \
        return ClassName();                                                                                            \
    }                                                                                                                  \
    bool IsAKindOf(const char* className) const override                                                               \
    {                                                                                                                  \
        return IsSameClass(className, ClassName()) || Base::IsAKindOf(className);                                      \
    }                                                                                                                  \
                                                                                                                       \
private:

// Description of a failure: a message id of a message catalog and the message's parameters.
//
// Created on the heap by the failing operation and handed to the error mechanism, with GetReturn or
// Throw, which owns it from then on. Error objects are counted: whoever keeps one adds a reference.
class PLATFORM_API CATError
{
public:
    CATError(const char* msgId, const char* catalog);
    CATError(const CATError&) = delete;
    CATError& operator=(const CATError&) = delete;

    static const char* ClassName() { return "CATError"; }
    virtual const char* IsA() const { return ClassName(); }
    virtual bool IsAKindOf(const char* className) const { return IsSameClass(className, ClassName()); }

    // A new error with its parameters, one reference for the creator: Make<CATInternalError>({usName}, "NameERR_1001",
    // "Catalog"). What follows the parameters goes to the constructor.
    template <class Error, class... Argument>
    static Error* Make(std::initializer_list<CATUnicodeString> parameters, const Argument&... arguments)
    {
        // The parameters come first: an error has nobody yet to whom it could be given when memory runs out.
        std::vector<CATUnicodeString> texts(parameters);
        auto* pError = new Error(arguments...);
        pError->m_Parameters.swap(texts);
        return pError;
    }

    // Sets the parameters that replace /P1, /P2, ... in the message. count is the number of texts that follow.
    template <class... Text>
    void SetNLSParameters(int count, const Text&... texts)
    {
        m_Parameters = {CATUnicodeString(texts)...};
        m_Parameters.resize(static_cast<std::size_t>(count));
    }

    const CATUnicodeString& GetMsgId() const { return m_MsgId; }
    const CATUnicodeString& GetMsgCatalog() const { return m_Catalog; }
    const std::vector<CATUnicodeString>& GetNLSParameters() const { return m_Parameters; }

    // The message in the session's language; the message id and the parameters when the catalog has no such message.
    CATUnicodeString GetNLSMessage() const;

    void AddRef() { ++m_References; }
    void Release();

    // Makes a result: severity 1 without error is success, severity 2 with an error is a failure that carries it,
    // severity 0 without error is a quiet failure. Takes over the creator's reference of an error that it has not
    // seen before; an error that came from CATGetLastError keeps its result. File and line are those of the report.
    static HRESULT GetReturn(int severity, CATError* pError, void* pReserved, const char* file, int line)
    {
        if (severity == 1) {
            return S_OK;
        }
        const HRESULT hr = GetFailure(severity, pError, pReserved, file, line);
        assert(FAILED(hr));
        return hr;
    }

    // The error that a result carries, NULL when it carries none. The result stays good for the errors of the last
    // several thousand failures; after that, and for a result made up elsewhere, the answer is NULL, never another
    // failure's error. The pointer is borrowed: add a reference to keep it.
    static CATError* CATGetLastError(HRESULT hr, void* pReserved);

    // Raises the error as an exception (CATXHException). Takes over the reference as GetReturn does.
    [[noreturn]] static void Throw(const char* file, int line, CATError* pError);

    // Errors that exist at this moment; tests look at it.
    static int GetLiveCount();

    // Forgets the errors kept for past results.
    static void ForgetResults();

protected:
    virtual ~CATError();
    static bool IsSameClass(const char* a, const char* b);

private:
    friend class CATErrorRegister;
    friend class CATXHException;

    static HRESULT GetFailure(int severity, CATError* pError, void* pReserved, const char* file, int line);

    CATUnicodeString m_MsgId;
    CATUnicodeString m_Catalog;
    std::vector<CATUnicodeString> m_Parameters;
    unsigned int m_References = 1;
    HRESULT m_Result = S_OK;
};

// Error of the platform's and the libraries' own checks, as opposed to a message for the user.
class PLATFORM_API CATInternalError : public CATError
{
    CATDeclareErrorClass(CATInternalError, CATError)

public:
    using CATError::CATError;

protected:
    ~CATInternalError() override;
};

// The exception that carries a raised error through the guards.
class PLATFORM_API CATXHException : public std::exception
{
public:
    // Adds a reference of its own.
    explicit CATXHException(CATError* pError);
    CATXHException(const CATXHException& other) noexcept;
    CATXHException& operator=(const CATXHException&) = delete;
    ~CATXHException() override;

    CATError* GetError() const { return m_pError; }

    // A failure that carries the error, for a guard that ends with a result.
    HRESULT GetResult() const;

    const char* what() const noexcept override;

private:
    CATError* m_pError;
};
