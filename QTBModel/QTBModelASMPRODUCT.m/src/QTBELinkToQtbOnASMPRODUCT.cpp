#include "QTBELinkToQtbOnASMPRODUCT.h"

#include "CATIProduct.h"
#include "QTBCheck.h"
#include "QTBConstants.h"
#include "QTBFileUtil.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIPsnNode.h"
#include "QTBInfoUtil.h"
#include "QTBLoadManager.h"
#include "QTBPdmSessionUtil.h"
#include "QTBPsnTreeUtil.h"
#include "QTBTraceUtil.h"

namespace {

bool IsInstance(const CATIProduct_var& spIProduct)
{
    return spIProduct->IsReference() == E_FAIL;
}

// The reference of a product as far as it is loaded; empty when there is none.
CATIProduct_var GetReference(const CATIProduct_var& spIProduct, unsigned char bLoadDocument)
{
    CATIProduct_var spIProductOnReference;
    return SUCCEEDED(QTBPsnTreeUtil::GetReferencePsnNode(spIProduct, &spIProductOnReference, bLoadDocument, FALSE))
               ? spIProductOnReference
               : CATIProduct_var();
}

} // namespace

HRESULT QTBELinkToQtbOnASMPRODUCT::SetCatiaPartNumberForLink(const CATUnicodeString& usCatiaPartNumber)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::SetCatiaPartNumberForLink");
    QTB_ASSERT(usCatiaPartNumber != "");
    m_usCatiaPartNumberForLink = usCatiaPartNumber;
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    const CATUnicodeString usCurrentPartNumber = spIProductOnThis->GetPartNumber();
    if (!(usCurrentPartNumber == usCatiaPartNumber)) {
        QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::SetCatiaPartNumberForLink -> current PSN part number:["
                  << usCurrentPartNumber << "], new part number:[" << usCatiaPartNumber << "]");
        spIProductOnThis->SetPartNumber(usCatiaPartNumber);
    }
    return QTB_SUCCESS;
}

// What is only information: the number that the CAD system reports wins.
void QTBELinkToQtbOnASMPRODUCT::TracePartNumbers(const CATUnicodeString& usPsnPartNumber) const
{
    if (!m_usCatiaPartNumberForLink.IsEmpty() && !(m_usCatiaPartNumberForLink == usPsnPartNumber)) {
        QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::GetCatiaPartNumberForLink -> part number (PDM):["
                  << m_usCatiaPartNumberForLink << "], part number (PSN):[" << usPsnPartNumber << "]");
    }
}

HRESULT QTBELinkToQtbOnASMPRODUCT::GetCatiaPartNumberForLink(CATUnicodeString* pusCatiaPartNumber,
                                                             const unsigned char& bLoadDocument)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::GetCatiaPartNumberForLink");
    QTB_ASSERT(pusCatiaPartNumber != NULL);
    *pusCatiaPartNumber = "";
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    const CATIProduct_var spIProductOnLoadedReference = GetReference(spIProductOnThis, FALSE);
    const CATIProduct_var spIProductOnReference =
        spIProductOnLoadedReference != NULL_var ? spIProductOnLoadedReference : spIProductOnThis;

    const CATUnicodeString usPsnPartNumber = spIProductOnReference->GetPartNumber();
    if (!usPsnPartNumber.IsEmpty()) {
        if (!m_usPsnPartNumber.IsEmpty() && !(m_usPsnPartNumber == usPsnPartNumber)) {
            QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::GetCatiaPartNumberForLink -> part number (PSN) has changed from ["
                      << m_usPsnPartNumber << "] to [" << usPsnPartNumber << "]");
        }
        m_usPsnPartNumber = usPsnPartNumber;
        TracePartNumbers(usPsnPartNumber);
        *pusCatiaPartNumber = usPsnPartNumber;
        return QTB_SUCCESS;
    }

    QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::GetCatiaPartNumberForLink -> CATPart in visualization mode");
    if (!m_usPsnPartNumber.IsEmpty()) {
        TracePartNumbers(m_usPsnPartNumber);
        *pusCatiaPartNumber = m_usPsnPartNumber;
    } else if (!m_usCatiaPartNumberForLink.IsEmpty()) {
        *pusCatiaPartNumber = m_usCatiaPartNumberForLink;
    } else if (bLoadDocument != FALSE) {
        QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::GetCatiaPartNumberForLink -> loading the CATIA document");
        if (const CATIProduct_var spIProductWithDocument = GetReference(spIProductOnThis, TRUE);
            spIProductWithDocument != NULL_var) {
            *pusCatiaPartNumber = spIProductWithDocument->GetPartNumber();
        }
    }
    if (!pusCatiaPartNumber->IsEmpty()) {
        return QTB_SUCCESS;
    }

    CATUnicodeString usFileName;
    QTB_CALL(QTBFileUtil::GetReferenceFileName, spIProductOnReference, &usFileName, NULL);
    QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::GetCatiaPartNumberForLink -> getting the part number from the file name ["
              << usFileName << "]");
    if (usFileName.IsEmpty()) {
        QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::GetCatiaPartNumberForLink -> usFileName == \"\" !");
        return QTB_QUIET_FAILURE;
    }
    QTB_CALL(QTBFileUtil::GetFileNameWithoutExtension, usFileName, pusCatiaPartNumber);
    return QTB_SUCCESS;
}

HRESULT QTBELinkToQtbOnASMPRODUCT::GetCorrespondingPartPdmObjNode(const CATIProduct_var& spIProductOnReference,
                                                                  QTBIPdmObjNode_var* pspIPdmObjNodeOnPart)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::GetCorrespondingPartPdmObjNode");
    QTB_INTERFACE(spIProductOnReference);
    QTB_ASSERT(pspIPdmObjNodeOnPart != NULL);
    CATUnicodeString usPartNumber;
    if (FAILED(GetCatiaPartNumberForLink(&usPartNumber, FALSE)) || usPartNumber.IsEmpty()) {
        // The text names the other extension of products; meant.
        QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::GetCorrespondingPartPdmObjNode -> usPartNumber == \"\"");
        return QTB_QUIET_FAILURE;
    }
    QTBIPdmNode_var spIPdmNode;
    const HRESULT hr = g_QTBLoadManager.GetPdmPartForPartNumber(usPartNumber, &spIPdmNode);
    *pspIPdmObjNodeOnPart = spIPdmNode;
    return hr;
}

HRESULT QTBELinkToQtbOnASMPRODUCT::GetQtbStructureNodes(const CATIProduct_var& spIProductOnPsnInstance,
                                                        const QTBIPdmRelNode_var& spIPdmRelNodeOnCorrespondingPdmNode,
                                                        QTBIPdmRelNode_var* pspIPdmRelNode,
                                                        QTBIPdmObjNode_var* pspIPdmObjNode)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::GetQtbStructureNodes");
    QTB_INTERFACE(spIProductOnPsnInstance);
    QTB_INTERFACE(spIPdmRelNodeOnCorrespondingPdmNode);
    QTB_ASSERT(pspIPdmRelNode != NULL);
    QTB_ASSERT(pspIPdmObjNode != NULL);

    QTBIPdmObjNode_var spIPdmObjNodeOnRightObject;
    if (FAILED(spIPdmRelNodeOnCorrespondingPdmNode->GetRightObject(&spIPdmObjNodeOnRightObject))) {
        QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::GetQtbStructureNodes -> "
                  "spIPdmRelNodeOnCorrespondingPdmNode->GetRightObject !");
        QTB_TRACE("PSN node:" << QTBTraceUtil::GetNodeString(spIProductOnPsnInstance, FALSE) << ", PDM relation:"
                              << QTBTraceUtil::GetNodeString(spIPdmRelNodeOnCorrespondingPdmNode, FALSE) << ".");
        *pspIPdmRelNode = NULL_var;
        *pspIPdmObjNode = NULL_var;
        return QTB_QUIET_FAILURE;
    }
    if (const CATIProduct_var spIProductOnReference = GetReference(spIProductOnPsnInstance, FALSE);
        spIProductOnReference != NULL_var) {
        const CATUnicodeString usPsnPartNumber = spIProductOnReference->GetPartNumber();
        CATUnicodeString usPdmPartNumber;
        QTB_CALL(QTBInfoUtil::GetCatiaPartNumberFromPdm, spIPdmObjNodeOnRightObject, &usPdmPartNumber, FALSE, TRUE);
        if (!(usPsnPartNumber == usPdmPartNumber)) {
            QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::GetQtbStructureNodes -> ");
            QTB_TRACE("Wrong part number (same instance name, different part numbers -> different nodes)");
            QTB_TRACE("part numbers:'" << usPsnPartNumber << "'(PSN) / '" << usPdmPartNumber << "'(PDM)");
            *pspIPdmRelNode = NULL_var;
            *pspIPdmObjNode = NULL_var;
            return QTB_QUIET_FAILURE;
        }
    }
    *pspIPdmRelNode = spIPdmRelNodeOnCorrespondingPdmNode;
    *pspIPdmObjNode = spIPdmObjNodeOnRightObject;
    return QTB_SUCCESS;
}

HRESULT QTBELinkToQtbOnASMPRODUCT::ProdStrucPdmNodeExists(unsigned char* pbExists, QTBIPdmNode_var* pspIPdmNode,
                                                          QTBIPdmObjNode_var* pspIPdmObjNodeOnPart)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::ProdStrucPdmNodeExists");
    QTB_ASSERT(pbExists != NULL);
    *pbExists = FALSE;
    const QTBIPsnNode_var spIPsnNodeOnThis(this);
    QTB_INTERFACE(spIPsnNodeOnThis);
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);

    CATUnicodeString usPsnNodeType;
    const bool typeIsKnown = SUCCEEDED(spIPsnNodeOnThis->GetPsnNodeType(&usPsnNodeType, NULL));
    if (!typeIsKnown) {
        QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::ProdStrucPdmNodeExists -> spIPsnNodeOnThis->GetPsnNodeType !");
    } else if (usPsnNodeType == usBROKENLINK) {
        return QTB_SUCCESS;
    } else if (!IsInstance(spIProductOnThis)) {
        return FindPartOf(spIProductOnThis, pbExists, pspIPdmNode, pspIPdmObjNodeOnPart);
    }
    return FindStructureOfInstance(spIProductOnThis, pbExists, pspIPdmNode, pspIPdmObjNodeOnPart);
}

HRESULT QTBELinkToQtbOnASMPRODUCT::FindPartOf(const CATIProduct_var& spIProduct, unsigned char* pbExists,
                                              QTBIPdmNode_var* pspIPdmNode, QTBIPdmObjNode_var* pspIPdmObjNodeOnPart)
{
    QTBIPdmObjNode_var spIPdmObjNodeOnPart;
    if (FAILED(GetCorrespondingPartPdmObjNode(spIProduct, &spIPdmObjNodeOnPart))) {
        return QTB_SUCCESS;
    }
    *pbExists = TRUE;
    if (pspIPdmNode != NULL) {
        *pspIPdmNode = spIPdmObjNodeOnPart;
        QTB_INTERFACE(*pspIPdmNode);
    }
    if (pspIPdmObjNodeOnPart != NULL) {
        *pspIPdmObjNodeOnPart = spIPdmObjNodeOnPart;
        QTB_INTERFACE(*pspIPdmObjNodeOnPart);
    }
    return QTB_SUCCESS;
}

HRESULT QTBELinkToQtbOnASMPRODUCT::FindStructureOfInstance(const CATIProduct_var& spIProductOnThis,
                                                           unsigned char* pbExists, QTBIPdmNode_var* pspIPdmNode,
                                                           QTBIPdmObjNode_var* pspIPdmObjNodeOnPart)
{
    const QTBIPsnNode_var spIPsnNodeOnThis(this);
    CATIProduct_var spIProductOnFather;
    QTB_CALL(spIPsnNodeOnThis->GetFatherProduct, &spIProductOnFather, TRUE);
    QTB_INTERFACE(spIProductOnFather);
    const CATIProduct_var spIProductOnFatherReference = GetReference(spIProductOnFather, FALSE);
    if (spIProductOnFatherReference == NULL_var) {
        CATUnicodeString usAttribute1;
        CATUnicodeString usAttribute2;
        if (SUCCEEDED(QTBPsnTreeUtil::GetInstanceAttributes(spIProductOnFather, &usAttribute1, &usAttribute2))) {
            QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::ProdStrucPdmNodeExists -> no father reference node, instance info:["
                      << usAttribute1 << "/" << usAttribute2 << "]");
        } else {
            QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::ProdStrucPdmNodeExists -> no father reference node, part number:["
                      << spIProductOnFather->GetPartNumber() << "]");
        }
        return QTB_SUCCESS;
    }

    const CATUnicodeString usFatherPartNumber = spIProductOnFatherReference->GetPartNumber();
    CATUnicodeString usInstanceName;
    QTB_CALL(spIProductOnThis->GetPrdInstanceName, &usInstanceName);
    QTBIPdmRelNode_var spIPdmRelNode;
    if (SUCCEEDED(g_QTBLoadManager.GetPdmRelationForInstance(usFatherPartNumber, usInstanceName, &spIPdmRelNode)) &&
        spIPdmRelNode != NULL_var) {
        QTBIPdmRelNode_var spIPdmRelNodeOnStructure;
        QTBIPdmObjNode_var spIPdmObjNodeOnPart;
        if (SUCCEEDED(GetQtbStructureNodes(spIProductOnThis, spIPdmRelNode, &spIPdmRelNodeOnStructure,
                                           &spIPdmObjNodeOnPart))) {
            *pbExists = TRUE;
            if (pspIPdmNode != NULL) {
                *pspIPdmNode = spIPdmRelNodeOnStructure;
                QTB_INTERFACE(*pspIPdmNode);
            }
            if (pspIPdmObjNodeOnPart != NULL) {
                *pspIPdmObjNodeOnPart = spIPdmObjNodeOnPart;
                QTB_INTERFACE(*pspIPdmObjNodeOnPart);
            }
            return QTB_SUCCESS;
        }
    }
    return FindPartOf(spIProductOnThis, pbExists, pspIPdmNode, pspIPdmObjNodeOnPart);
}

HRESULT QTBELinkToQtbOnASMPRODUCT::CatiaFilePdmNodeExists(unsigned char* pbExists, QTBIPdmNode_var* pspIPdmNode)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::CatiaFilePdmNodeExists");
    QTB_ASSERT(pbExists != NULL);
    *pbExists = FALSE;
    const QTBIPsnNode_var spIPsnNodeOnThis(this);
    QTB_INTERFACE(spIPsnNodeOnThis);
    CATUnicodeString usPsnNodeType;
    QTB_CALL(spIPsnNodeOnThis->GetPsnNodeType, &usPsnNodeType, NULL);
    if (usPsnNodeType == usBROKENLINK) {
        return QTB_SUCCESS;
    }

    QTBIPdmNode_var spIPdmNodeOnFile;
    if (!(usPsnNodeType == usCATPRODUCT) && !(usPsnNodeType == usCATPART) && !(usPsnNodeType == usCMIARCHIVE)) {
        CATUnicodeString usPdmFileObjInfo;
        QTB_CALL(spIPsnNodeOnThis->GetPdmFileObjInfo, &usPdmFileObjInfo);
        if (SUCCEEDED(g_QTBLoadManager.GetPdmFileForPdmObjName(usPdmFileObjInfo, &spIPdmNodeOnFile, FALSE)) &&
            spIPdmNodeOnFile != NULL_var) {
            *pbExists = TRUE;
            if (pspIPdmNode != NULL) {
                *pspIPdmNode = spIPdmNodeOnFile;
                QTB_INTERFACE(*pspIPdmNode);
            }
            return QTB_SUCCESS;
        }
    }

    CATUnicodeString usPartNumber;
    if (FAILED(GetCatiaPartNumberForLink(&usPartNumber, FALSE))) {
        return QTB_SUCCESS;
    }
    if (SUCCEEDED(g_QTBLoadManager.GetPdmFileForPartNumber(usPartNumber, &spIPdmNodeOnFile)) &&
        QTBIPdmObjNode_var(spIPdmNodeOnFile) != NULL_var) {
        *pbExists = TRUE;
        if (pspIPdmNode != NULL) {
            *pspIPdmNode = spIPdmNodeOnFile;
            QTB_INTERFACE(*pspIPdmNode);
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBELinkToQtbOnASMPRODUCT::FileStrucPdmNodeExists(unsigned char* pbExists, QTBIPdmNode_var* pspIPdmNode,
                                                          unsigned char* pbNameOrVersionDiffers)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::FileStrucPdmNodeExists");
    QTB_ASSERT(pbExists != NULL);
    *pbExists = FALSE;
    if (pbNameOrVersionDiffers != NULL) {
        *pbNameOrVersionDiffers = FALSE;
    }
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    if (!IsInstance(spIProductOnThis) || QTBPdmSessionUtil::UseBomPartStructure() != FALSE) {
        return QTB_SUCCESS;
    }
    // What was written to an instance stays when its document is lost.
    const QTBIPsnNode_var spIPsnNodeOnThis(this);
    CATUnicodeString usPsnNodeType;
    if (spIPsnNodeOnThis != NULL_var && SUCCEEDED(spIPsnNodeOnThis->GetPsnNodeType(&usPsnNodeType, NULL)) &&
        usPsnNodeType == usBROKENLINK) {
        return QTB_SUCCESS;
    }
    CATUnicodeString usAttribute1;
    CATUnicodeString usAttribute2;
    if (FAILED(QTBPsnTreeUtil::GetInstanceAttributes(spIProductOnThis, &usAttribute1, &usAttribute2)) ||
        usAttribute1.IsEmpty() || usAttribute2.IsEmpty()) {
        QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::FileStrucPdmNodeExists -> did not find instance attributes");
        return QTB_SUCCESS;
    }
    QTBIPdmRelNode_var spIPdmRelNode;
    if (FAILED(g_QTBLoadManager.GetPdmRelationForInstance(usAttribute1 + "/" + usAttribute2, &spIPdmRelNode)) ||
        spIPdmRelNode == NULL_var) {
        return QTB_SUCCESS;
    }
    *pbExists = TRUE;
    unsigned char bIsEqual = TRUE;
    QTB_CALL(CheckNameAndVersion, spIProductOnThis, spIPdmRelNode, &bIsEqual);
    if (bIsEqual == FALSE && pbNameOrVersionDiffers != NULL) {
        *pbNameOrVersionDiffers = TRUE;
    }
    if (pspIPdmNode != NULL) {
        *pspIPdmNode = spIPdmRelNode;
        QTB_INTERFACE(*pspIPdmNode);
    }
    return QTB_SUCCESS;
}

HRESULT QTBELinkToQtbOnASMPRODUCT::CheckNameAndVersion(const CATIProduct_var& spIProduct,
                                                       const QTBIPdmRelNode_var& spIPdmRelNodeOnFileToFileRelation,
                                                       unsigned char* pbIsEqual)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::CheckNameAndVersion");
    QTB_INTERFACE(spIProduct);
    QTB_INTERFACE(spIPdmRelNodeOnFileToFileRelation);
    QTB_ASSERT(pbIsEqual != NULL);
    *pbIsEqual = TRUE;
    const CATUnicodeString usPartNumber = spIProduct->GetPartNumber();
    if (usPartNumber.IsEmpty()) {
        return QTB_SUCCESS;
    }
    QTBIPdmObjNode_var spIPdmObjNodeOnRightObject;
    QTB_CALL(spIPdmRelNodeOnFileToFileRelation->GetRightObject, &spIPdmObjNodeOnRightObject);
    const QTBIPdmNode_var spIPdmNodeOnRightObject(spIPdmObjNodeOnRightObject);
    QTB_INTERFACE(spIPdmNodeOnRightObject);
    CATUnicodeString usPdmPartNumber;
    if (FAILED(QTBInfoUtil::GetCatiaPartNumberFromPdm(spIPdmNodeOnRightObject, &usPdmPartNumber, FALSE, TRUE)) ||
        usPdmPartNumber.IsEmpty()) {
        return QTB_SUCCESS;
    }
    if (!(usPdmPartNumber == usPartNumber)) {
        *pbIsEqual = FALSE;
        return QTB_SUCCESS;
    }

    CATUnicodeString usVersionOfRightObject;
    CATUnicodeString usVersionOfFile;
    const auto readVersions = [&]() -> HRESULT {
        QTB_CALL(QTBInfoUtil::GetQtbVersion, spIPdmNodeOnRightObject, &usVersionOfRightObject);
        QTBIPdmNode_var spIPdmNodeOnFile;
        QTB_CALL(g_QTBLoadManager.GetPdmFileForPartNumber, usPartNumber, &spIPdmNodeOnFile);
        QTB_CALL(QTBInfoUtil::GetQtbVersion, spIPdmNodeOnFile, &usVersionOfFile);
        return QTB_SUCCESS;
    };
    if (const HRESULT hr = readVersions(); FAILED(hr)) {
        // Versions that are not known do not differ.
        QTB_TRACE(CATError::CATGetLastError(hr, NULL)->GetNLSMessage()
                  << " File:[" << __FILE__ << "], Line:[" << __LINE__ << "]");
        return QTB_SUCCESS;
    }
    QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::CheckNameAndVersion -> '" << usVersionOfRightObject << "' / '"
                                                                    << usVersionOfFile << "'");
    *pbIsEqual = usVersionOfRightObject == usVersionOfFile ? TRUE : FALSE;
    return QTB_SUCCESS;
}

HRESULT QTBELinkToQtbOnASMPRODUCT::CorrespondingPdmNodesExist(unsigned char* pbExist,
                                                              QTBIPdmRelNode_var* pspIPdmRelNodeOnPartRel,
                                                              QTBIPdmObjNode_var* pspIPdmObjNodeOnPartObj,
                                                              QTBIPdmObjNode_var* pspIPdmObjNodeOnFileObj)
{
    QTB_SCOPE("QTBELinkToQtbOnASMPRODUCT::CorrespondingPdmNodesExist");
    QTB_ASSERT(pbExist != NULL);
    *pbExist = FALSE;
    const auto setPartNodes = [&](const QTBIPdmRelNode_var& spIPdmRelNode, const QTBIPdmObjNode_var& spIPdmObjNode) {
        if (pspIPdmRelNodeOnPartRel != NULL) {
            *pspIPdmRelNodeOnPartRel = spIPdmRelNode;
        }
        if (pspIPdmObjNodeOnPartObj != NULL) {
            *pspIPdmObjNodeOnPartObj = spIPdmObjNode;
        }
    };

    if (pspIPdmRelNodeOnPartRel != NULL || pspIPdmObjNodeOnPartObj != NULL) {
        unsigned char bExists = FALSE;
        QTBIPdmNode_var spIPdmNode;
        if (QTBPdmSessionUtil::UseBomPartStructure() != FALSE) {
            QTB_CALL(ProdStrucPdmNodeExists, &bExists, &spIPdmNode, NULL);
        } else {
            unsigned char bNameOrVersionDiffers = FALSE;
            QTB_CALL(FileStrucPdmNodeExists, &bExists, &spIPdmNode, &bNameOrVersionDiffers);
            if (bNameOrVersionDiffers != FALSE) {
                bExists = FALSE;
            }
        }

        if (bExists == FALSE) {
            setPartNodes(NULL_var, NULL_var);
        } else {
            // TRUE also when the relation is rejected below, with both handles untouched; meant, callers rely on it.
            *pbExist = TRUE;
            if (const QTBIPdmRelNode_var spIPdmRelNode(spIPdmNode); spIPdmRelNode != NULL_var) {
                const CATIProduct_var spIProductOnThis(this);
                QTB_INTERFACE(spIProductOnThis);
                if (!IsInstance(spIProductOnThis)) {
                    QTB_TRACE("QTBELinkToQtbOnASMPRODUCT::CorrespondingPdmNodesExist -> "
                              << "spIProductOnThis should be an instance, but it is a reference !");
                }
                QTBIPdmRelNode_var spIPdmRelNodeOnPartRel;
                QTBIPdmObjNode_var spIPdmObjNodeOnPartObj;
                if (SUCCEEDED(GetQtbStructureNodes(spIProductOnThis, spIPdmRelNode, &spIPdmRelNodeOnPartRel,
                                                   &spIPdmObjNodeOnPartObj))) {
                    setPartNodes(spIPdmRelNodeOnPartRel, spIPdmObjNodeOnPartObj);
                }
            } else {
                setPartNodes(NULL_var, spIPdmNode);
                if (pspIPdmObjNodeOnPartObj != NULL) {
                    QTB_INTERFACE(*pspIPdmObjNodeOnPartObj);
                }
            }
        }
    }

    if (pspIPdmObjNodeOnFileObj != NULL) {
        unsigned char bExists = FALSE;
        QTBIPdmNode_var spIPdmNode;
        QTB_CALL(CatiaFilePdmNodeExists, &bExists, &spIPdmNode);
        *pspIPdmObjNodeOnFileObj = NULL_var;
        if (bExists != FALSE) {
            *pbExist = TRUE;
            *pspIPdmObjNodeOnFileObj = spIPdmNode;
            QTB_INTERFACE(*pspIPdmObjNodeOnFileObj);
        }
    }
    return QTB_SUCCESS;
}
