#pragma once

#include <unordered_set>

#include "CATListValCATBaseUnknown_var.h"
#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"
#include "QTBConstants.h"

class QTBIPdmNode;
class QTBIPdmObjNode;
class QTBIPdmRelNode;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;
using QTBIPdmObjNode_var = CATInterface_var<QTBIPdmObjNode>;
using QTBIPdmRelNode_var = CATInterface_var<QTBIPdmRelNode>;

// Questions about nodes of the PDM graph that the schema and the links between the nodes answer.
//
// Operations fail, quietly unless they say otherwise, for an empty handle and for a null list; the out-pointers of the
// classifying operations may be null where nothing is asked. A classification that does not apply is an answer, FALSE,
// with the texts emptied.
class QTBBASELIB_API QTBPdmGraphUtil
{
public:
    // The object nodes that the graph holds under the two object keys of a relation's record. Fails, with both
    // handles empty, when one of them is missing; the graph update then drops the relation.
    static HRESULT GetCorrespondingObjNodesByPdmKey(const QTBIPdmRelNode_var& spIPdmRelNode,
                                                    QTBIPdmNode_var* pspIPdmNodeOnLeft,
                                                    QTBIPdmNode_var* pspIPdmNodeOnRight);

    // Keeps of each item the objects of its newest version, in their order, and takes the relations at the same
    // positions out with the others (pPdmRels may be null). Objects are versions of one item when class and part
    // number, or class and file name, are equal; an object with neither is an item of its own. The object that the PDM
    // system calls the newest counts as such, otherwise versions are compared (IsNewerVersion). Fails, changing
    // nothing, for a null object list and for lists of different size.
    static HRESULT FilterForNewestQtbVersion(CATListValCATBaseUnknown_var* pPdmObjs,
                                             CATListValCATBaseUnknown_var* pPdmRels);

    // Whether a version is newer than another: digits are compared as numbers, letters case by case with longer runs
    // of letters behind shorter ones (A, B, Z, AA), everything else as text.
    static bool IsNewerVersion(const CATUnicodeString& usVersion, const CATUnicodeString& usThanVersion);

    // Keeps the nodes with the highest action index, in their order. Components that are no PDM nodes are dropped.
    static HRESULT FilterForNewestActionIndex(CATListValCATBaseUnknown_var* pPdmNodes);

    // Whether an object's class is one of the schema's part classes; its class, and whether that can have sub-parts.
    static HRESULT IsPartNode(const QTBIPdmObjNode_var& spIPdmObjNode, unsigned char* pbIsPart,
                              CATUnicodeString* pusClassName, unsigned char* pbCanHaveSubParts);

    // Whether an object's class is one of the schema's classes of CAD files; its class and the kind of file.
    static HRESULT IsCatiaFileNode(const QTBIPdmObjNode_var& spIPdmObjNode, unsigned char* pbIsCatiaFile,
                                   CATUnicodeString* pusClassName, QTBCatiaFileClass* pFileClass);

    // Whether both objects of a relation are parts. FALSE for a relation that is not linked to two objects.
    static HRESULT IsPartToPartRelationNode(const QTBIPdmRelNode_var& spIPdmRelNode, unsigned char* pbIsPartToPart);

    // Whether the node is the placeholder root of the PDM graph.
    static HRESULT IsDefaultRootNode(const QTBIPdmNode_var& spIPdmNode, unsigned char* pbIsDefaultRoot);

    // File name, type (usCATPRODUCT, usCMIARCHIVE, ...) and kind of a file object. The name is the attribute that the
    // session setting names, empty when the node has none.
    static HRESULT GetCatiaFileNodeInformation(const QTBIPdmObjNode_var& spIPdmObjNode, CATUnicodeString* pusFileName,
                                               CATUnicodeString* pusFileType, QTBCatiaFileClass* pFileClass,
                                               unsigned char* pbIsCatiaFile);

    // Appends a node unless the list holds it already. The list is looked through, unless the caller keeps a set of
    // the nodes beside it.
    static HRESULT SetAdd(const CATBaseUnknown_var& spNode, CATListValCATBaseUnknown_var* pNodes,
                          std::unordered_set<const CATBaseUnknown*>* pSetOfNodes = nullptr);
};
