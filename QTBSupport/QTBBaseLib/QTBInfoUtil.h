#pragma once

#include "CATListValCATUnicodeString.h"
#include "CATRawCollint.h"
#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"
#include "QTBIPdmNode.h"

// What the PDM system and the session say about one PDM node.
//
// The answers come from two places. Rights, versions, file state, the relevant base class and the action index are
// entries of the node's name/value list "QtbInfo"; part number and instance names are the node's attributes that the
// session settings name. An absent entry is an answer, not an error: each operation says which. Unless it says
// otherwise an operation fails, quietly, only for an empty handle, a null out-pointer and a component that has no
// attributes. Out-values are not touched by a failing operation.
class QTBBASELIB_API QTBInfoUtil
{
public:
    // Number of the last action that read the node, higher is more recent: entry "QtbActionIndex". 0, which is no
    // action's number, when the entry is absent or no number. Asked for every node of every walk over the graph.
    static HRESULT GetActionIndex(const QTBIPdmNode_var& spIPdmNode, int* pActionIndex);

    // Stamps the node. A record without "QtbInfo" gets one; fails when the node has no record to add it to. Called by
    // the graph update for every node that it read; the load manager takes note of the node.
    static HRESULT SetActionIndex(const int& iActionIndex, QTBIPdmNode_var* pspIPdmNode);

    // The class that describes an object whose own class is a specialisation: entry "QtbRelevantBaseClass". Fails
    // quietly when it is absent or empty.
    static HRESULT GetRelevantBaseClassFromPdm(const QTBIPdmNode_var& spIPdmNode, CATUnicodeString* pusClassName);

    // Version state of a node; each out-pointer may be null.
    //   pbIsNewest         entry "QtbIsNewestVersion"; without it whether version and newest version are equal, TRUE
    //                      when no newest version is named
    //   pbHasSubVersion    whether the node's version is divided into sub-versions
    //   pusVersion         entry "QtbVersion", empty when absent
    //   pusNewestVersion   entry "QtbNewestVersion"; without it the version, when that is the newest
    //   pusSubVersion      entry "QtbSubVersion", empty when absent
    // Fails quietly for a node without version information, that is without any of the entries "QtbVersion",
    // "QtbNewestVersion" and "QtbIsNewestVersion".
    static HRESULT GetPdmVersionInfo(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsNewest,
                                     unsigned char* pbHasSubVersion, CATUnicodeString* pusVersion,
                                     CATUnicodeString* pusNewestVersion, CATUnicodeString* pusSubVersion);

    // The node's version: entry "QtbVersion". Fails quietly when it is absent or empty.
    static HRESULT GetQtbVersion(const QTBIPdmNode_var& spIPdmNode, CATUnicodeString* pusVersion);

    // Rights of the user on a node: entries "QtbIsEditAllowed", "QtbIsCheckOutAllowed", "QtbIsCheckInAllowed" and
    // "QtbIsUpdateSubCmpRelsAllowed". A right that the PDM system did not grant, in one of the spellings "true",
    // "True" and "TRUE", is FALSE.
    static HRESULT PdmObjectIsEditAllowed(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsAllowed);
    // pusUser, when given, receives the user who has the object checked out: entry "QtbCheckedOutBy", empty when
    // nobody has.
    static HRESULT PdmObjectIsCheckOutAllowed(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsAllowed,
                                              CATUnicodeString* pusUser = nullptr);
    static HRESULT PdmObjectIsCheckInAllowed(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsAllowed);
    static HRESULT PdmObjectIsUpdateSubCmpRelsAllowed(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsAllowed);

    // Whether a document has a file in the PDM system's vault: entry "QtbHasFile"; without it TRUE for the objects of
    // a file class and FALSE for all other nodes.
    static HRESULT PdmDocumentHasFile(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbHasFile);

    // The CAD part number of an object: the string attribute named by the session setting of the part number. Fails
    // when the node has no such attribute, with bReportIfUndefined with a message for the user, otherwise quietly; an
    // empty part number counts as none when bEmptyIsUndefined is set. An object node's handle may be given as well.
    static HRESULT GetCatiaPartNumberFromPdm(const QTBIPdmNode_var& spIPdmNode, CATUnicodeString* pusPartNumber,
                                             const unsigned char& bReportIfUndefined,
                                             const unsigned char& bEmptyIsUndefined);

    // Whether the object has a part number that is not empty.
    static HRESULT CatiaPartNumberFromPdmIsDefined(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsDefined);

    // Instance names of a relation, in order: the attribute named by the session setting of the instance name, a list
    // or a string, which is a list of one name. Fails quietly when the node has no such attribute.
    static HRESULT GetCatiaInstanceNameListFromPdm(const QTBIPdmNode_var& spIPdmNode,
                                                   CATListValCATUnicodeString* pInstanceNames);

    // Whether the relation has an instance name that is not empty.
    static HRESULT CatiaInstanceNameFromPdmIsDefined(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsDefined);

    // Whether the name is one of the relation's instance names; the comparison is exact. FALSE for a relation without
    // instance names and for an empty name.
    static HRESULT CatiaInstanceNameIsUsedInRelation(const QTBIPdmNode_var& spIPdmNodeOnRelation,
                                                     const CATUnicodeString& usInstanceName, unsigned char* pbIsUsed);

    // Whether the relation lacks an instance name: it has none at all, or one of them is empty.
    static HRESULT RelationHasEmptyInstanceName(const QTBIPdmNode_var& spIPdmNodeOnRelation,
                                                unsigned char* pbHasEmptyName);

    // Whether the relation stands for more than one instance, that is has more than one instance name. The further
    // out-pointers may be null: all instance names in order, the different ones in order of first occurrence, and,
    // parallel to these, how often each occurs.
    static HRESULT IsMultiQuantityRelation(const QTBIPdmNode_var& spIPdmNodeOnRelation, unsigned char* pbIsMulti,
                                           CATListValCATUnicodeString* pInstanceNames,
                                           CATListValCATUnicodeString* pDifferentNames, CATRawCollint* pOccurrences);
};
