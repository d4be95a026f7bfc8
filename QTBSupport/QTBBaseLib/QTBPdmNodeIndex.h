#pragma once

#include <unordered_map>
#include <vector>

#include "CATListValCATBaseUnknown_var.h"
#include "CATUnicodeString.h"

class QTBIPdmNodeCont;
class QTBIPdmObjNode;
class QTBIPdmRelNode;
using QTBIPdmNodeCont_var = CATInterface_var<QTBIPdmNodeCont>;
using QTBIPdmObjNode_var = CATInterface_var<QTBIPdmObjNode>;
using QTBIPdmRelNode_var = CATInterface_var<QTBIPdmRelNode>;

// The load manager's indexes over the session's PDM graph: from a part number, a file's object info, a father object or
// an instance key to the nodes that go with it.
//
// They hold keys of nodes and are built on the first look-up; from then on nodes that are read are noted and entered on
// the next look-up. An entry may be out of date, so a look-up gives candidates that the graph holds now, each once, and
// the caller checks that they still fit. When entries pile up, the indexes are built anew.
class QTBPdmNodeIndex
{
public:
    // Notes a node that was read; costs nothing before the first look-up.
    void NodeWasRead(const CATUnicodeString& usNodeKey);

    // Objects with that part number, and CAD files with that object info.
    CATListValCATBaseUnknown_var FindByPartNumber(const CATUnicodeString& usPartNumber);
    CATListValCATBaseUnknown_var FindFilesByObjInfo(const CATUnicodeString& usObjInfo);

    // Relations on the right of the object with that key: those with that instance name, and those that lead to a CAD
    // file.
    CATListValCATBaseUnknown_var FindRelationsByInstance(const CATUnicodeString& usFatherKey,
                                                         const CATUnicodeString& usInstanceName);
    CATListValCATBaseUnknown_var FindFileRelations(const CATUnicodeString& usFatherKey);

    // Relations with that instance key.
    CATListValCATBaseUnknown_var FindRelationsByInstanceKey(const CATUnicodeString& usInstanceKey);

    // File name without extension, a slash, the PDM class; empty for an object that is no CAD file or has no file name.
    static CATUnicodeString GetObjInfo(const QTBIPdmObjNode_var& spIPdmObjNode);

private:
    using Keys = std::vector<CATUnicodeString>;
    using Entries = std::unordered_map<CATUnicodeString, Keys>;

    // The indexes are built anew when they hold more than GROWTH times what the last building entered, and some.
    static constexpr std::size_t GROWTH = 2;
    static constexpr std::size_t ALLOWANCE = 4096;
    // Up to that many keys of one text are looked through for a node that is read again.
    static constexpr std::size_t FEW = 8;

    // Finds in one of the indexes, after bringing all of them up to date.
    CATListValCATBaseUnknown_var Find(Entries QTBPdmNodeIndex::*pIndex, const CATUnicodeString& usText);
    void BringUpToDate(const QTBIPdmNodeCont_var& spIPdmNodeCont);
    void Build(const QTBIPdmNodeCont_var& spIPdmNodeCont);

    void EnterNode(const CATBaseUnknown_var& spNode);
    void EnterObject(const QTBIPdmObjNode_var& spIPdmObjNode, const CATUnicodeString& usKey);
    void EnterRelation(const QTBIPdmRelNode_var& spIPdmRelNode, const CATUnicodeString& usKey);
    void Enter(Entries& entries, const CATUnicodeString& usText, const CATUnicodeString& usKey);

    std::size_t GetLimit() const { return GROWTH * m_EntriesBuilt + ALLOWANCE; }

    Entries m_ByPartNumber;
    Entries m_ByObjInfo;
    Entries m_ByInstance;
    Entries m_ByInstanceKey;
    Entries m_FileRelations;

    Keys m_ReadKeys;
    std::size_t m_EntryCount = 0;
    std::size_t m_EntriesBuilt = 0;
    bool m_bBuilt = false;
};
