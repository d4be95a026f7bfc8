#pragma once

#include <functional>

#include "CATListValCATBaseUnknown_var.h"
#include "CATListValCATUnicodeString.h"
#include "QTBBaseLibExport.h"
#include "QTBCommandText.h"
#include "QTBNodeRelationInfo.h"

class CATIDOMDocument;
class QTBIPdmRequests;
class QTBIRepNode;
using CATIDOMDocument_var = CATInterface_var<CATIDOMDocument>;
using QTBIPdmRequests_var = CATInterface_var<QTBIPdmRequests>;
using QTBIRepNode_var = CATInterface_var<QTBIRepNode>;

// Commands that the PDM system carries out (QTBIPdmRequests): its answer updates the graph, and the windows follow.
// When it refuses, the command fails with its message and the session stays as it is. Without a connection that answers
// such requests a command fails with the message that names the service it needs.
class QTBBASELIB_API QTBRequestCommands
{
public:
    using Request = std::function<HRESULT(QTBIPdmRequests& requests, CATIDOMDocument_var* pspAnswer)>;

    // Makes a request and takes its answer in.
    static HRESULT Run(const CATUnicodeString& usServiceName, const Request& request);

    // Updates the graph with an answer and lets all PDM windows follow: what they show of it, and new relations where
    // such relations are displayed. Objects that no window shows do not appear, unlike with
    // QTBIPdmNodeCont::UpdateAllRepNodeContainers, which makes them roots. The lists, which may be null, receive the
    // nodes read.
    static HRESULT TakeAnswer(const CATIDOMDocument_var& spAnswer, CATListValCATBaseUnknown_var* pObjects,
                              CATListValCATBaseUnknown_var* pRelations);

    // Reads what the relations lead to from the objects of those keys into the graph, that many levels far, -1 for any.
    // S_FALSE without a connection that answers requests: there is no more than what the graph holds then.
    static HRESULT Fetch(const CATListValCATUnicodeString& Keys, const CATListValQTBNodeRelationInfo& Relations,
                         int levels);

    // Commands on the object of a rep node.
    static HRESULT CheckOut(const QTBIRepNode_var& spIRepNode);
    static HRESULT CheckIn(const QTBIRepNode_var& spIRepNode);
    static HRESULT Promote(const QTBIRepNode_var& spIRepNode);
    static HRESULT Revise(const QTBIRepNode_var& spIRepNode);
    static HRESULT DeleteNewestVersion(const QTBIRepNode_var& spIRepNode);

    // Has the user change the attributes of the class's form "UpdateItem" (QTBItemDialog) and changes those with a new
    // value; none when the user gives up. Fails with a message when the class has no such form.
    static HRESULT UpdateItem(const QTBIRepNode_var& spIRepNode);

    // Creates an object with its relation to the rep node's object, or, without a rep node, to the owner that the text
    // names. The user fills in their forms "Properties" (QTBItemDialog); what is left empty is not set, and
    // nothing is created when the user gives up. Neither is created when the PDM system refuses the relation. The rep
    // node shows the new object.
    static HRESULT Create(const QTBCommandText::Creation& creation, const QTBIRepNode_var& spIRepNode);

    // Deletes the items, objects with their relations. S_FALSE without a connection that answers requests. The option
    // may be null.
    static HRESULT Delete(const CATListValCATUnicodeString& Keys, const CATUnicodeString* pusDeleteOption);
};
