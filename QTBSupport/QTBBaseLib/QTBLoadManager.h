#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>

#include "CATHashTabQTBHashTableAttribute.h"
#include "CATInterface_var.h"
#include "CATListValCATUnicodeString.h"
#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"

class QTBHashTableNvSetAttribute;
class QTBIPdmNode;
class QTBIPdmRelNode;
class QTBPdmNodeIndex;
class QTBProductRecords;
using QTBIPdmNode_var = CATInterface_var<QTBIPdmNode>;
using QTBIPdmRelNode_var = CATInterface_var<QTBIPdmRelNode>;

// What the session knows about the data loaded from the PDM system: which PDM node belongs to a part number, an
// instance or a file, what was recorded for the products of the CAD session, and the CATIA attributes of nodes.
//
// The look-ups answer from indexes over the session's PDM graph. Indexes hold node keys, not nodes: they are brought up
// to date on the first look-up after nodes were read, and every answer is checked against the graph as it is then, so a
// node that was removed or that changed is never given. Of several candidates the one of the newest action wins, then
// the newest version. Products are given by any handle on them; what is recorded about an instance is recorded about
// its reference. Unless an operation says otherwise it fails, quietly, for an empty handle, an empty key and a null
// pointer; a look-up that finds nothing fails quietly with its out-value untouched.
class QTBBASELIB_API QTBLoadManager
{
public:
    QTBLoadManager();
    QTBLoadManager(const QTBLoadManager&) = delete;
    QTBLoadManager& operator=(const QTBLoadManager&) = delete;
    ~QTBLoadManager();

    // The part object with that part number.
    HRESULT GetPdmPartForPartNumber(const CATUnicodeString& usPartNumber, QTBIPdmNode_var* pspIPdmNode);

    // The file object loaded for a part number: a file object that carries the number itself, else a file that hangs on
    // the right of the part with that number. Files that hold product structure or geometry of their own (products,
    // parts, archives) come before all others.
    HRESULT GetPdmFileForPartNumber(const CATUnicodeString& usPartNumber, QTBIPdmNode_var* pspIPdmNode);

    // The file object by its object info: file name without extension, a slash, the PDM class. bReportIfUndefined TRUE
    // makes a missing file an error with a message.
    HRESULT GetPdmFileForPdmObjName(const CATUnicodeString& usObjInfo, QTBIPdmNode_var* pspIPdmNode,
                                    const unsigned char& bReportIfUndefined);

    // The part-to-part relation that places an instance of that name under the part with that number.
    HRESULT GetPdmRelationForInstance(const CATUnicodeString& usFatherPartNumber,
                                      const CATUnicodeString& usInstanceName, QTBIPdmRelNode_var* pspIPdmRelNode);

    // The relation, of any class, of an instance key: the two attribute strings of the instance, which are the
    // relation's PDM key and the instance name, joined with "/" (MakeInstanceKey). The key of a relation that was
    // superseded leads to the one in its place.
    HRESULT GetPdmRelationForInstance(const CATUnicodeString& usInstanceKey, QTBIPdmRelNode_var* pspIPdmRelNode);
    static CATUnicodeString MakeInstanceKey(const CATUnicodeString& usRelationKey,
                                            const CATUnicodeString& usInstanceName);

    // PDM class under which a product is or will be stored. bEmptyIfUndefined TRUE makes the answer for a product
    // without type the empty text instead of a failure. bOverwrite FALSE keeps a type that is recorded already.
    HRESULT GetPdmNodeType(const CATBaseUnknown_var& spProduct, CATUnicodeString* pusPdmNodeType,
                           const unsigned char& bEmptyIfUndefined);
    HRESULT SetPdmNodeType(const CATBaseUnknown_var& spProduct, const CATUnicodeString& usPdmNodeType,
                           const unsigned char& bOverwrite);

    // Whether the product's reference file is the root of an archive, and the archive's file name, which may be empty.
    // A product of which nothing is recorded is no root. The name's pointer may be null.
    HRESULT GetCatiaFileIsCmiArchiveRoot(const CATBaseUnknown_var& spProduct, unsigned char* pbIsRoot,
                                         CATUnicodeString* pusArchiveFileName);
    HRESULT SetCatiaFileIsCmiArchiveRoot(const CATBaseUnknown_var& spProduct, const unsigned char& bIsRoot,
                                         const CATUnicodeString& usArchiveFileName);

    // Whether the product's reference is an auxiliary file rather than a part. Get fails for a product of which that
    // is not recorded.
    HRESULT GetPsnReferenceIsAuxFile(const CATBaseUnknown_var& spProduct, unsigned char* pbIsAuxFile);
    HRESULT SetPsnReferenceIsAuxFile(const CATBaseUnknown_var& spProduct, const unsigned char& bIsAuxFile);

    // Instance keys of a product's children as they were when it was loaded, one list per part number. Get fails when
    // none was saved; an empty list may have been.
    HRESULT GetChildInstanceInfosAtLoad(const CATUnicodeString& usPartNumber,
                                        CATListValCATUnicodeString* pInstanceInfos);
    HRESULT SetChildInstanceInfosAtLoad(const CATUnicodeString& usPartNumber,
                                        const CATListValCATUnicodeString& InstanceInfos);
    HRESULT ChildInstanceNamesAreProcessed(const CATUnicodeString& usPartNumber, unsigned char* pbAreProcessed);

    // CATIA attributes of a node, kept under its key, so that they outlive a re-read of the node. Get fails for a name
    // that is not set; the set's pointer stays good until the set is dropped (RemovePdmNodeData, Reset) and fails when
    // the key has none.
    HRESULT SetCatiaAttr(const CATUnicodeString& usNodeKey, const CATUnicodeString& usName,
                         const CATUnicodeString& usValue);
    HRESULT GetCatiaAttr(const CATUnicodeString& usNodeKey, const CATUnicodeString& usName, CATUnicodeString* pusValue);
    HRESULT GetCatiaAttributesNvSetPtr(const CATUnicodeString& usNodeKey, QTBHashTableNvSetAttribute** ppNvSet);

    // A node takes the place of the item with that key, which is still in the graph: CATIA attributes, child instance
    // keys and the links of instances pass to it, where it has none of its own. The product, which may be empty, gets
    // the node's class as its type.
    HRESULT ReplacePdmItem(const QTBIPdmNode_var& spIPdmNodeOnNewNode, const CATUnicodeString& usOldKey,
                           const CATBaseUnknown_var& spProduct);

    // Forgets the CATIA attributes of a node that leaves the graph. Its places in the indexes go when they are next
    // looked at; child instance keys saved at load are kept for the session.
    HRESULT RemovePdmNodeData(const QTBIPdmNode_var& spIPdmNode);

    // A node was read from an answer; it is indexed on the next look-up. Called for every node that is stamped with an
    // action index.
    HRESULT PdmNodeWasRead(const CATUnicodeString& usNodeKey);

    // Forgets everything; called at the end of the session.
    void Reset();

private:
    QTBHashTableNvSetAttribute* FindNvSet(const CATUnicodeString& usNodeKey) const;
    HRESULT FindRelationByInstanceKey(const CATUnicodeString& usInstanceKey, QTBIPdmRelNode_var* pspIPdmRelNode);
    void NoteSupersededRelation(const CATUnicodeString& usOldKey, const CATUnicodeString& usNewKey);
    void MoveCatiaAttributes(const CATUnicodeString& usFromKey, const CATUnicodeString& usToKey);
    void MoveChildInstances(const QTBIPdmNode_var& spFromNode, const QTBIPdmNode_var& spToNode);

    std::unique_ptr<QTBPdmNodeIndex> m_pIndex;
    std::unique_ptr<QTBProductRecords> m_pProducts;
    // Entries are QTBHashTableNvSetAttribute, owned by the table.
    CATHashTabQTBHashTableAttribute m_CatiaAttributes;
    std::unordered_map<CATUnicodeString, CATListValCATUnicodeString> m_ChildInstances;
    // Keys of superseded relations, and those of the relations that took their places: products keep the instance keys
    // that they were created with.
    std::unordered_map<CATUnicodeString, CATUnicodeString> m_SupersedingRelations;
    std::size_t m_LongestSupersededKey = 0;
};

// The session's load manager.
QTBBASELIB_API extern QTBLoadManager g_QTBLoadManager;
