#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "CATCommandHeader.h"

// The command headers of the application, by id; the frame has one register (CATApplicationFrame::GetCommandHeaders).
class PLATFORM_API CATCommandHeaderRegister
{
public:
    // Runs a command text that it knows; S_FALSE for any other text.
    using Interpreter = std::function<HRESULT(const CATUnicodeString& commandText, const CATBaseUnknown_var& spObject)>;

    CATCommandHeaderRegister();
    CATCommandHeaderRegister(const CATCommandHeaderRegister&) = delete;
    CATCommandHeaderRegister& operator=(const CATCommandHeaderRegister&) = delete;
    ~CATCommandHeaderRegister();

    // Makes an id known whose header does not exist yet. A header that there is stays.
    void Reserve(const CATUnicodeString& id);

    // Adds a header, in the place of one with the same id.
    void Add(std::unique_ptr<CATCommandHeader> pHeader);

    // Takes an id out, with its header. An unknown id is no error.
    void Remove(const CATUnicodeString& id);

    // S_OK and the header, null for an id that is only reserved; E_FAIL for an unknown id.
    HRESULT Find(const CATUnicodeString& id, CATCommandHeader** ppHeader) const;

    // Starts the command of a header. Fails, with CommandNotFoundERR_1003, for an id that has no header.
    HRESULT StartCommand(const CATUnicodeString& id, const CATBaseUnknown_var& spObject) const;

    // Adds someone who runs command texts; those added first are asked first. The owner identifies the interpreter for
    // RemoveInterpreter.
    void AddInterpreter(const void* pOwner, Interpreter interpreter);
    void RemoveInterpreter(const void* pOwner);

    // Runs a command text. Fails, with CommandNotFoundERR_1003, for a text that nobody knows.
    HRESULT Interpret(const CATUnicodeString& commandText, const CATBaseUnknown_var& spObject) const;

private:
    std::unordered_map<CATUnicodeString, std::shared_ptr<CATCommandHeader>> m_Headers;
    std::vector<std::pair<const void*, Interpreter>> m_Interpreters;
};
