#include "QTBDesignTableUtil.h"

#include "CATIPrdLink.h"
#include "CATIProduct.h"
#include "CATListValCATUnicodeString.h"
#include "QTBConstants.h"
#include "QTBFileUtil.h"
#include "QTBIPdmNode.h"
#include "QTBLoadManager.h"
#include "QTBPdmSessionUtil.h"

namespace {

template <class Value>
void EmptyList(CATListVal<Value>* pList)
{
    if (pList != nullptr) {
        pList->RemoveAll();
    }
}

template <class Value>
void AppendTo(CATListVal<Value>* pList, const Value& value)
{
    if (pList != nullptr) {
        pList->Append(value);
    }
}

// The PDM object of a table's file, empty when the PDM system does not know the file.
QTBIPdmNode_var FindPdmNode(const CATUnicodeString& usFilePath, const CATListValCATUnicodeString& PdmClasses)
{
    CATUnicodeString usFileName;
    QTBFileUtil::GetFileNameFromPathString(usFilePath, &usFileName);
    QTBFileUtil::GetFileNameWithoutExtension(usFileName, &usFileName);
    for (const CATUnicodeString& usPdmClass : PdmClasses) {
        QTBIPdmNode_var spIPdmNode;
        if (SUCCEEDED(g_QTBLoadManager.GetPdmFileForPdmObjName(usFileName + "/" + usPdmClass, &spIPdmNode, FALSE))) {
            return spIPdmNode;
        }
    }
    return NULL_var;
}

} // namespace

HRESULT QTBDesignTableUtil::GetDesignTableInformation(const CATIProduct_var& spIProduct,
                                                      CATListValQTBDesignTable* pTablesInPdm,
                                                      CATListValQTBDesignTable* pTablesNotInPdm,
                                                      CATListValQTBDesignTable* pTablesInDocument,
                                                      CATListValCATBaseUnknown_var* pPdmNodes)
{
    EmptyList(pTablesInPdm);
    EmptyList(pTablesNotInPdm);
    EmptyList(pTablesInDocument);
    EmptyList(pPdmNodes);
    const CATIPrdLink_var spIPrdLink(spIProduct);
    if (spIPrdLink == NULL_var) {
        return E_FAIL;
    }
    CATListValCATUnicodeString Names;
    CATListValCATUnicodeString FilePaths;
    if (FAILED(spIPrdLink->GetDesignTables(&Names, &FilePaths))) {
        return S_OK;
    }
    CATListValCATUnicodeString* pPdmClasses = nullptr;
    if (const HRESULT hr = QTBPdmSessionUtil::GetCatiaFileClassInfo(QTB_CATIA_FILE_CLASS_DESIGNTABLE, nullptr, nullptr,
                                                                    &pPdmClasses, QTB_BOM_TYPE_AUX_FILE, nullptr);
        FAILED(hr)) {
        return hr;
    }
    for (int i = 1; i <= Names.Size(); ++i) {
        const QTBDesignTable table(Names[i], FilePaths[i]);
        if (FilePaths[i].IsEmpty()) {
            AppendTo(pTablesInDocument, table);
            continue;
        }
        const QTBIPdmNode_var spIPdmNode =
            pPdmClasses != nullptr ? FindPdmNode(FilePaths[i], *pPdmClasses) : QTBIPdmNode_var();
        if (spIPdmNode == NULL_var) {
            AppendTo(pTablesNotInPdm, table);
            continue;
        }
        AppendTo(pTablesInPdm, table);
        AppendTo(pPdmNodes, CATBaseUnknown_var(spIPdmNode));
    }
    return S_OK;
}
