#pragma once

#include <functional>

#include "CATIDOMDocument.h"
#include "QTBIPdmRequests.h"
#include "ShellContext.h"

// Commands of the shell that ask the PDM store.
class ShellStoreCommands
{
public:
    explicit ShellStoreCommands(ShellContext& context) : m_Context(context) {}
    ShellGroup GetStoreGroup();

private:
    using Request = std::function<HRESULT(QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer)>;

    void Connect(const ShellArguments& arguments);
    void ChangeUser(const ShellArguments& arguments);
    void Create(const ShellArguments& arguments);
    void Import(const ShellArguments& arguments);
    void Query(const ShellArguments& arguments);
    void Get(const ShellArguments& arguments);
    void Refresh(const ShellArguments& arguments);
    void CheckOut(const ShellArguments& arguments);
    void CheckIn(const ShellArguments& arguments);
    void Promote(const ShellArguments& arguments);
    void Revise(const ShellArguments& arguments);
    void Update(const ShellArguments& arguments);
    void CreateObject(const ShellArguments& arguments);
    void Relate(const ShellArguments& arguments);
    void Delete(const ShellArguments& arguments);
    void PrintVersions(const ShellArguments& arguments);
    void PrintCheckedOut(const ShellArguments& arguments);
    void Fetch(const ShellArguments& arguments);

    // The session's requests; refused without a store.
    QTBIPdmRequests_var GetRequests() const;
    // Makes a request, takes its answer in and says what became of the items; the objects are the answer.
    CATListValCATBaseUnknown_var Run(const Request& request);
    CATListValCATBaseUnknown_var TakeAnswer(const CATIDOMDocument_var& spAnswer);
    CATListValCATBaseUnknown_var Invoke(const char* function, const char* argument, const CATUnicodeString& usValue);
    static ShellArguments Rest(const ShellArguments& arguments, std::size_t first);

    ShellContext& m_Context;
};
