#pragma once

#include "CATInterface_var.h"
#include "CATListValCATUnicodeString.h"
#include "QTBInterfacesLibExport.h"
#include "QTBNodeRelationInfo.h"

class CATIDOMDocument;
using CATIDOMDocument_var = CATInterface_var<CATIDOMDocument>;

inline constexpr IID IID_QTBIPdmRequests{"QTBIPdmRequests"};

// The requests that the commands of a session make to the PDM system. A component that answers
// QTBICommunicationServices answers these too, when its PDM system does.
//
// Each answer is a document that the PDM graph can be updated with (QTBIPdmNodeCont::UpdatePdmGraph). A request that
// fails carries a message for the user, changed nothing and leaves *pspAnswer as it was. Lists of keys are done as a
// whole or not at all.
class QTBINTERFACESLIB_API QTBIPdmRequests : public CATBaseUnknown
{
    CATDeclareInterface(QTBIPdmRequests, CATBaseUnknown)

public:
    // The items of those keys.
    virtual HRESULT GetItems(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer) = 0;

    // The objects of a class, subclasses included (of any class for an empty name), whose attributes have the values; a
    // star in a value stands for any text. The two lists are parallel.
    virtual HRESULT Query(const CATUnicodeString& usClassName, const CATListValCATUnicodeString& AttrNames,
                          const CATListValCATUnicodeString& AttrValues, const unsigned char& bNewestVersionsOnly,
                          CATIDOMDocument_var* pspAnswer) = 0;

    // The objects of those keys and what the relations lead to from there, up to that many levels away; -1 for any.
    virtual HRESULT Expand(const CATListValCATUnicodeString& Keys, const CATListValQTBNodeRelationInfo& Relations,
                           const int& iLevels, CATIDOMDocument_var* pspAnswer) = 0;

    virtual HRESULT CheckOut(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer) = 0;
    // FilePaths, parallel to the keys, are the files that the objects have from now on; missing or empty for no change.
    virtual HRESULT CheckIn(const CATListValCATUnicodeString& Keys, const CATListValCATUnicodeString& FilePaths,
                            CATIDOMDocument_var* pspAnswer) = 0;
    // Brings the objects into their next state.
    virtual HRESULT Promote(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer) = 0;
    // Makes a new version of each object, which supersedes it.
    virtual HRESULT Revise(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer) = 0;

    // The XML holds "a" elements, one after the other.
    virtual HRESULT UpdateAttributes(const CATUnicodeString& usKey, const CATUnicodeString& usAttributesXml,
                                     CATIDOMDocument_var* pspAnswer) = 0;
    // With an empty key the PDM system makes one.
    virtual HRESULT CreateObject(const CATUnicodeString& usClassName, const CATUnicodeString& usKey,
                                 const CATUnicodeString& usAttributesXml, CATIDOMDocument_var* pspAnswer) = 0;
    // Deletes objects, with their relations, and relations. The option belongs to the PDM system and may be null.
    virtual HRESULT DeleteItems(const CATListValCATUnicodeString& Keys, const CATUnicodeString* pusDeleteOption,
                                CATIDOMDocument_var* pspAnswer) = 0;

    // Calls a function of the PDM system; the lists of its arguments' names and values are parallel. The answer is that
    // of "dynamicInvoke".
    virtual HRESULT InvokeFunction(const CATUnicodeString& usFunctionName, const CATListValCATUnicodeString& ArgNames,
                                   const CATListValCATUnicodeString& ArgValues, CATIDOMDocument_var* pspAnswer) = 0;

    // Writes the file of an object to that path.
    virtual HRESULT FetchFile(const CATUnicodeString& usKey, const CATUnicodeString& usPath) = 0;
};

using QTBIPdmRequests_var = CATInterface_var<QTBIPdmRequests>;
