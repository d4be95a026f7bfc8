#include "QTBCatiaNodeBehaviorDefinitions.h"
#include "QTBCheck.h"
#include "QTBEPsnNodeOnASMPRODUCT.h"
#include "QTBFileUtil.h"
#include "QTBGlobVarsUtil.h"
#include "QTBILinkToQtb.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBLoadManager.h"
#include "QTBPdmGraphUtil.h"
#include "QTBPdmSessionUtil.h"
#include "QTBPsnTreeUtil.h"
#include "QTBSchemaUtil.h"

namespace {

// The kinds of files that are stored as what they are, never as a part.
QTBCatiaFileClass GetShapeFileClass(const CATUnicodeString& usPsnNodeType)
{
    if (usPsnNodeType == usCGR) {
        return QTB_CATIA_FILE_CLASS_CGR;
    }
    return usPsnNodeType == usV4MODEL ? QTB_CATIA_FILE_CLASS_V4MODEL : QTB_CATIA_FILE_CLASS_UNKNOWN;
}

HRESULT GetPdmClass(QTBCatiaFileClass fileClass, CATUnicodeString* pusPdmClass)
{
    QTB_CALL(QTBPdmSessionUtil::GetCatiaFileClassInfo, fileClass, pusPdmClass, NULL, NULL, QTB_BOM_TYPE_AUX_FILE, NULL);
    return QTB_SUCCESS;
}

void TraceNotSupported(const CATUnicodeString& usPsnNodeType, const char* reason)
{
    QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::GetPdmNodeType -> PSN node type [" << usPsnNodeType << "] not supported yet"
                                                                           << reason);
}

} // namespace

HRESULT QTBEPsnNodeOnASMPRODUCT::SetPdmNodeType(const CATUnicodeString& usPdmNodeType)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::SetPdmNodeType");
    QTB_ASSERT(usPdmNodeType != "");
    QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::SetPdmNodeType -> usPdmNodeType:[" << usPdmNodeType << "]");
    CATUnicodeString usNewPdmNodeType = usPdmNodeType;
    CATUnicodeString usPdmDocType;
    if (SUCCEEDED(QTBPdmSessionUtil::CatDocTypeCatToPdm(usPdmNodeType, &usPdmDocType, FALSE))) {
        QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::SetPdmNodeType -> changing string 'usPdmNodeType' from '"
                  << usPdmNodeType << "' to '" << usPdmDocType << "'.");
        usNewPdmNodeType = usPdmDocType;
    }
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    CATUnicodeString usOldPdmNodeType;
    QTB_CALL(g_QTBLoadManager.GetPdmNodeType, spIProductOnThis, &usOldPdmNodeType, TRUE);
    if (usOldPdmNodeType == usNewPdmNodeType) {
        return QTB_SUCCESS;
    }
    QTB_CALL(g_QTBLoadManager.SetPdmNodeType, spIProductOnThis, usNewPdmNodeType, TRUE);

    CATListValCATUnicodeString PartClassNames;
    QTB_CALL(QTBSchemaUtil::GetPartClassNames, &PartClassNames, NULL, NULL);
    const unsigned char bIsAuxFile = PartClassNames.Locate(usNewPdmNodeType) > 0 ? FALSE : TRUE;
    QTB_CALL(g_QTBLoadManager.SetPsnReferenceIsAuxFile, spIProductOnThis, bIsAuxFile);

    unsigned char bIsCmiArchive = FALSE;
    QTB_CALL(QTBPdmSessionUtil::IsCatiaFileClass, QTB_CATIA_FILE_CLASS_CMIARCHIVE, usNewPdmNodeType, &bIsCmiArchive);
    CATUnicodeString usReferenceFileName;
    QTB_CALL(QTBFileUtil::GetReferenceFileName, spIProductOnThis, &usReferenceFileName, NULL);
    if (bIsCmiArchive != FALSE) {
        // A root that is recorded already keeps the name of its archive.
        unsigned char bIsCmiArchiveRoot = FALSE;
        QTB_CALL(g_QTBLoadManager.GetCatiaFileIsCmiArchiveRoot, spIProductOnThis, &bIsCmiArchiveRoot, NULL);
        if (bIsCmiArchiveRoot != FALSE) {
            return QTB_SUCCESS;
        }
    }
    QTB_CALL(g_QTBLoadManager.SetCatiaFileIsCmiArchiveRoot, spIProductOnThis, bIsCmiArchive, "");
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::GetPdmNodeType(CATUnicodeString* pusPdmNodeType, CATUnicodeString* pusPdmNodeTypeNls,
                                                unsigned char* pbPdmNodeTypeIsDerived)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetPdmNodeType");
    QTB_ASSERT(pusPdmNodeType != NULL);
    CATUnicodeString usCmiArchiveType;
    QTB_CALL(QTBPdmSessionUtil::GetCatiaFileClassInfo, QTB_CATIA_FILE_CLASS_CMIARCHIVE, &usCmiArchiveType, NULL, NULL,
             QTB_BOM_TYPE_AUX_FILE, NULL);
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    unsigned char bIsUnderCmiArchiveRoot = FALSE;
    QTB_CALL(IsUnderCmiArchiveRoot, &bIsUnderCmiArchiveRoot);

    CATUnicodeString usPdmNodeType;
    unsigned char bIsDerived = FALSE;
    if (bIsUnderCmiArchiveRoot != FALSE) {
        usPdmNodeType = usCmiArchiveType;
        bIsDerived = TRUE;
    } else if (SUCCEEDED(g_QTBLoadManager.GetPdmNodeType(spIProductOnThis, &usPdmNodeType, FALSE))) {
        bIsDerived = SUCCEEDED(QTBPdmSessionUtil::CatDocTypePdmToCat(usPdmNodeType, NULL, NULL)) ? TRUE : FALSE;
    } else {
        if (const HRESULT hr = FindPdmNodeType(usCmiArchiveType, &usPdmNodeType, &bIsDerived); FAILED(hr)) {
            return hr;
        }
        CATUnicodeString usCatProductType;
        QTB_CALL(QTBPdmSessionUtil::GetCatiaFileClassInfo, QTB_CATIA_FILE_CLASS_CATPRODUCT, &usCatProductType, NULL,
                 NULL, QTB_BOM_TYPE_AUX_FILE, NULL);
        if (usPdmNodeType != usCatProductType) {
            QTB_CALL(SetPdmNodeType, usPdmNodeType);
        }
    }

    *pusPdmNodeType = usPdmNodeType;
    if (pusPdmNodeTypeNls != NULL) {
        QTB_CALL(QTBSchemaUtil::GetPdmNodeTypeNlsString, FALSE, usPdmNodeType, pusPdmNodeTypeNls, 1);
    }
    if (pbPdmNodeTypeIsDerived != NULL) {
        *pbPdmNodeTypeIsDerived = bIsDerived;
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::FindPdmNodeType(const CATUnicodeString& usCmiArchiveType,
                                                 CATUnicodeString* pusPdmNodeType, unsigned char* pbIsDerived)
{
    const QTBILinkToQtb_var spILinkToQtbOnThis(this);
    QTB_INTERFACE(spILinkToQtbOnThis);
    unsigned char bPdmNodesExist = FALSE;
    // Nobody reads the nodes, but only what is asked for is looked up.
    QTBIPdmObjNode_var spIPdmObjNodeOnPart;
    QTBIPdmObjNode_var spIPdmObjNodeOnFile;
    QTB_CALL(spILinkToQtbOnThis->CorrespondingPdmNodesExist, &bPdmNodesExist, NULL, &spIPdmObjNodeOnPart,
             &spIPdmObjNodeOnFile);
    if (spIPdmObjNodeOnPart != NULL_var) {
        *pbIsDerived = FALSE;
        QTB_CALL(spIPdmObjNodeOnPart->GetClassAttr, pusPdmNodeType, NULL);
        return QTB_SUCCESS;
    }
    *pbIsDerived = TRUE;
    if (spIPdmObjNodeOnFile != NULL_var) {
        QTB_CALL(spIPdmObjNodeOnFile->GetClassAttr, pusPdmNodeType, NULL);
        return QTB_SUCCESS;
    }
    CATUnicodeString usPsnNodeType;
    QTB_CALL(GetPsnNodeType, &usPsnNodeType, NULL);
    return QTBPdmSessionUtil::UseBomPartStructure() != FALSE
               ? InferPartOrFileType(usPsnNodeType, usCmiArchiveType, pusPdmNodeType, pbIsDerived)
               : InferFileType(usPsnNodeType, usCmiArchiveType, pusPdmNodeType);
}

HRESULT QTBEPsnNodeOnASMPRODUCT::InferFileType(const CATUnicodeString& usPsnNodeType,
                                               const CATUnicodeString& usCmiArchiveType,
                                               CATUnicodeString* pusPdmNodeType)
{
    if (usPsnNodeType == usCATPRODUCT) {
        return GetPdmClass(QTB_CATIA_FILE_CLASS_CATPRODUCT, pusPdmNodeType);
    }
    if (usPsnNodeType == usCATPART) {
        unsigned char bIsDefined = FALSE;
        QTB_CALL(QTBPdmSessionUtil::GetCatiaFileClassInfo, QTB_CATIA_FILE_CLASS_CATPART, pusPdmNodeType, NULL, NULL,
                 QTB_BOM_TYPE_PART, &bIsDefined);
        return bIsDefined != FALSE ? QTB_SUCCESS : GetPdmClass(QTB_CATIA_FILE_CLASS_CATPART, pusPdmNodeType);
    }
    if (usPsnNodeType == usCMIARCHIVE) {
        *pusPdmNodeType = usCmiArchiveType;
        return QTB_SUCCESS;
    }
    CATUnicodeString usPdmClass;
    if (const QTBCatiaFileClass fileClass = GetShapeFileClass(usPsnNodeType);
        fileClass != QTB_CATIA_FILE_CLASS_UNKNOWN) {
        if (const HRESULT hr = GetPdmClass(fileClass, &usPdmClass); FAILED(hr)) {
            return hr;
        }
    }
    if (usPdmClass.IsEmpty()) {
        TraceNotSupported(usPsnNodeType, "");
        return QTB_QUIET_FAILURE;
    }
    *pusPdmNodeType = usPdmClass;
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::InferPartOrFileType(const CATUnicodeString& usPsnNodeType,
                                                     const CATUnicodeString& usCmiArchiveType,
                                                     CATUnicodeString* pusPdmNodeType, unsigned char* pbIsDerived)
{
    CATListValCATUnicodeString ClassNames;
    CATListValCATUnicodeString ClassNamesWithSubParts;
    CATListValCATUnicodeString CatPartClassNames;
    QTB_CALL(QTBSchemaUtil::GetPartClassNames, &ClassNames, &ClassNamesWithSubParts, &CatPartClassNames);
    QTB_ASSERT(ClassNamesWithSubParts.Size() > 0);
    CATUnicodeString usCatPartType;
    unsigned char bCatPartIsBomPart = FALSE;
    QTB_CALL(QTBPdmSessionUtil::GetCatiaFileClassInfo, QTB_CATIA_FILE_CLASS_CATPART, &usCatPartType, &bCatPartIsBomPart,
             NULL, QTB_BOM_TYPE_AUX_FILE, NULL);
    *pbIsDerived = FALSE;
    if (usPsnNodeType == usCATPRODUCT) {
        unsigned char bParentPdmPartExists = FALSE;
        unsigned char bCanHaveSubParts = FALSE;
        QTB_CALL(GetParentPdmPartInfo, &bParentPdmPartExists, &bCanHaveSubParts);
        const bool mustBeArchive = bParentPdmPartExists != FALSE && bCanHaveSubParts == FALSE;
        *pbIsDerived = mustBeArchive ? TRUE : FALSE;
        *pusPdmNodeType = mustBeArchive ? usCmiArchiveType : ClassNamesWithSubParts[1];
        return QTB_SUCCESS;
    }
    if (usPsnNodeType == usCATPART && bCatPartIsBomPart != FALSE) {
        *pusPdmNodeType = CatPartClassNames.Size() > 0 ? CatPartClassNames[1] : ClassNamesWithSubParts[1];
        return QTB_SUCCESS;
    }
    *pbIsDerived = TRUE;
    if (usPsnNodeType == usCATPART) {
        *pusPdmNodeType = usCatPartType;
        return QTB_SUCCESS;
    }
    if (usPsnNodeType == usCMIARCHIVE) {
        *pusPdmNodeType = usCmiArchiveType;
        return QTB_SUCCESS;
    }
    const QTBCatiaFileClass fileClass = GetShapeFileClass(usPsnNodeType);
    if (fileClass == QTB_CATIA_FILE_CLASS_UNKNOWN) {
        TraceNotSupported(usPsnNodeType, "");
        return QTB_QUIET_FAILURE;
    }
    CATUnicodeString usPdmClass;
    if (const HRESULT hr = GetPdmClass(fileClass, &usPdmClass); FAILED(hr)) {
        return hr;
    }
    if (usPdmClass.IsEmpty()) {
        // The parenthesis stays open in this text.
        TraceNotSupported(usPsnNodeType, " (no entry in QTBSchema.xml file !");
        return QTB_QUIET_FAILURE;
    }
    *pusPdmNodeType = usPdmClass;
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::GetParentPdmPartInfo(unsigned char* pbParentPdmPartExists,
                                                      unsigned char* pbCanHaveSubParts)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetParentPdmPartInfo");
    QTB_ASSERT(pbParentPdmPartExists != NULL);
    QTB_ASSERT(pbCanHaveSubParts != NULL);
    *pbParentPdmPartExists = FALSE;
    *pbCanHaveSubParts = FALSE;
    CATIProduct_var spIProductOnFatherNode;
    if (FAILED(GetFatherProduct(&spIProductOnFatherNode, TRUE))) {
        return QTB_SUCCESS;
    }
    const QTBILinkToQtb_var spILinkToQtbOnFatherNode(spIProductOnFatherNode);
    QTB_INTERFACE(spILinkToQtbOnFatherNode);
    unsigned char bExists = FALSE;
    QTBIPdmObjNode_var spIPdmObjNodeOnPart;
    QTB_CALL(spILinkToQtbOnFatherNode->ProdStrucPdmNodeExists, &bExists, NULL, &spIPdmObjNodeOnPart);
    if (bExists == FALSE || spIPdmObjNodeOnPart == NULL_var) {
        return QTB_SUCCESS;
    }
    *pbParentPdmPartExists = TRUE;
    unsigned char bIsPartNode = FALSE;
    QTB_CALL(QTBPdmGraphUtil::IsPartNode, spIPdmObjNodeOnPart, &bIsPartNode, NULL, pbCanHaveSubParts);
    QTB_ASSERT(bIsPartNode);
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::GetPdmNodeTypeCommandHeaderIds(CATListValCATUnicodeString* pCommandHeaderIdList)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetPdmNodeTypeCommandHeaderIds");
    QTB_ASSERT(pCommandHeaderIdList != NULL);
    pCommandHeaderIdList->RemoveAll();
    unsigned char bIsUnderCmiArchiveRoot = FALSE;
    QTB_CALL(IsUnderCmiArchiveRoot, &bIsUnderCmiArchiveRoot);
    if (bIsUnderCmiArchiveRoot != FALSE) {
        return QTB_SUCCESS;
    }
    const QTBILinkToQtb_var spILinkToQtbOnThis(this);
    QTB_INTERFACE(spILinkToQtbOnThis);
    unsigned char bPdmNodesExist = FALSE;
    QTBIPdmObjNode_var spIPdmObjNodeOnPart;
    QTBIPdmObjNode_var spIPdmObjNodeOnFile;
    QTB_CALL(spILinkToQtbOnThis->CorrespondingPdmNodesExist, &bPdmNodesExist, NULL, &spIPdmObjNodeOnPart,
             &spIPdmObjNodeOnFile);
    if (bPdmNodesExist != FALSE) {
        return QTB_SUCCESS;
    }

    CATListValCATUnicodeString CandidateTypes;
    if (const HRESULT hr = GetCandidateTypes(&CandidateTypes); FAILED(hr)) {
        return hr;
    }
    CATUnicodeString usPdmNodeType;
    unsigned char bIsDerived = FALSE;
    // A quiet failure is a product without PDM node type.
    const HRESULT hrPdmNodeType = GetPdmNodeType(&usPdmNodeType, NULL, &bIsDerived);
    if (FAILED(hrPdmNodeType) && CATError::CATGetLastError(hrPdmNodeType, NULL) != NULL) {
        QTB_RESULT_AS("GetPdmNodeType", hrPdmNodeType);
    }
    for (const CATUnicodeString& usCandidateType : CandidateTypes) {
        CATUnicodeString usCurrentType = usPdmNodeType;
        if (bIsDerived != FALSE) {
            QTB_CALL(GetPsnNodeType, &usCurrentType, NULL);
        }
        const unsigned char bIsCurrent = usCandidateType == usCurrentType ? TRUE : FALSE;
        CATUnicodeString usCommandHeaderId;
        QTB_CALL(QTBSchemaUtil::GetPdmNodeTypeCommandHeaderIdString, bIsCurrent, usCandidateType, &usCommandHeaderId);
        pCommandHeaderIdList->Append(usCommandHeaderId);
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::GetCandidateTypes(CATListValCATUnicodeString* pCandidateTypes)
{
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    CATUnicodeString usReferenceFileName;
    CATUnicodeString usPsnNodeType;
    QTB_CALL(QTBFileUtil::GetReferenceFileName, spIProductOnThis, &usReferenceFileName, &usPsnNodeType);
    CATUnicodeString usCmiArchiveType;
    QTB_CALL(QTBPdmSessionUtil::GetCatiaFileClassInfo, QTB_CATIA_FILE_CLASS_CMIARCHIVE, &usCmiArchiveType, NULL, NULL,
             QTB_BOM_TYPE_AUX_FILE, NULL);
    if (usCmiArchiveType.IsEmpty()) {
        QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::GetPdmNodeTypeCommandHeaderIds -> "
                  "QTBPdmSessionUtil::GetCatiaFileClassInfo(CMIARCHIVE) !");
    }
    const bool usesBomPartStructure = QTBPdmSessionUtil::UseBomPartStructure() != FALSE;
    CATListValCATUnicodeString PartClassNames;
    CATListValCATUnicodeString PartClassNamesWithSubParts;
    CATListValCATUnicodeString CatPartClassNames;
    bool isUnderPartWithoutSubParts = false;
    if (usesBomPartStructure) {
        QTB_CALL(QTBSchemaUtil::GetPartClassNames, &PartClassNames, &PartClassNamesWithSubParts, &CatPartClassNames);
        QTB_ASSERT(PartClassNamesWithSubParts.Size() > 0);
        unsigned char bParentPdmPartExists = FALSE;
        unsigned char bCanHaveSubParts = FALSE;
        QTB_CALL(GetParentPdmPartInfo, &bParentPdmPartExists, &bCanHaveSubParts);
        isUnderPartWithoutSubParts = bParentPdmPartExists != FALSE && bCanHaveSubParts == FALSE;
    }
    unsigned char bSubNodesHavePdmNodes = FALSE;
    if (FAILED(SubNodesHaveCorrespondingPdmNodes(&bSubNodesHavePdmNodes))) {
        QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::GetPdmNodeTypeCommandHeaderIds -> SubNodesHaveCorrespondingPdmNodes !");
    }
    QTBPdmSystem PdmSystem = QTB_PDMSYSTEM_UNKNOWN;
    QTB_CALL(QTBSchemaUtil::GetSystem, &PdmSystem);
    QTB_ASSERT((PdmSystem == QTB_PDMSYSTEM_ARAS_INNOVATOR) || (PdmSystem == QTB_PDMSYSTEM_ENOVIA_MATRIX));

    const bool canBePart = usesBomPartStructure && !isUnderPartWithoutSubParts;
    const bool isShape = GetShapeFileClass(usPsnNodeType) != QTB_CATIA_FILE_CLASS_UNKNOWN;
    if (PdmSystem == QTB_PDMSYSTEM_ARAS_INNOVATOR) {
        if (usPsnNodeType == usCATPRODUCT) {
            pCandidateTypes->Append(PartClassNamesWithSubParts);
        } else if (usPsnNodeType == usCATPART) {
            pCandidateTypes->Append(CatPartClassNames);
        }
    } else if (usPsnNodeType == usCATPRODUCT) {
        if (!usesBomPartStructure) {
            pCandidateTypes->Append(usCATPRODUCT);
        } else if (canBePart) {
            pCandidateTypes->Append(PartClassNamesWithSubParts);
        }
        if (bSubNodesHavePdmNodes == FALSE && !usCmiArchiveType.IsEmpty()) {
            pCandidateTypes->Append(usCMIARCHIVE);
        }
    } else if (usPsnNodeType == usCATPART || isShape) {
        if (canBePart) {
            pCandidateTypes->Append(PartClassNames);
        }
        pCandidateTypes->Append(usPsnNodeType);
        if (isShape && !usCmiArchiveType.IsEmpty()) {
            pCandidateTypes->Append(usCMIARCHIVE);
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::NeedsSpecialBehavior(unsigned char* pbNeedsSpecialBehavior,
                                                      CATUnicodeString* pusBehavior)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::NeedsSpecialBehavior");
    QTB_ASSERT(pbNeedsSpecialBehavior != NULL);
    QTB_ASSERT(pusBehavior != NULL);
    *pbNeedsSpecialBehavior = FALSE;
    *pusBehavior = "";
    unsigned char bConfigurableBehaviorIsOn = FALSE;
    QTB_CALL(QTBGlobVarsUtil::GetConfigurableCatiaNodeBehaviorState, &bConfigurableBehaviorIsOn);
    if (bConfigurableBehaviorIsOn == FALSE) {
        return QTB_SUCCESS;
    }
    CATUnicodeString usPsnNodeType;
    QTB_CALL(GetPsnNodeType, &usPsnNodeType, NULL);
    if (usPsnNodeType != usEMBCOMP && usPsnNodeType != usCATPRODUCT) {
        return QTB_SUCCESS;
    }
    // A product without part number is never looked up: the empty number is where the cache starts.
    unsigned char bPartNumberHasChanged = FALSE;
    CATUnicodeString usPartNumber;
    QTB_CALL(PartNumberHasChanged, &bPartNumberHasChanged, &usPartNumber);
    if (bPartNumberHasChanged != FALSE) {
        m_usBehaviorPartNumber = usPartNumber;
        QTB_CALL(NeedsSpecialBehavior, usPsnNodeType, usPartNumber, &m_bNeedsSpecialBehavior, &m_usBehavior);
    }
    *pbNeedsSpecialBehavior = m_bNeedsSpecialBehavior;
    *pusBehavior = m_usBehavior;
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::PartNumberHasChanged(unsigned char* pbPartNumberHasChanged,
                                                      CATUnicodeString* pusNewPartNumber)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::PartNumberHasChanged");
    QTB_ASSERT(pbPartNumberHasChanged != NULL);
    QTB_ASSERT(pusNewPartNumber != NULL);
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    CATIProduct_var spIProductOnReference;
    if (FAILED(QTBPsnTreeUtil::GetReferencePsnNode(spIProductOnThis, &spIProductOnReference, FALSE, FALSE))) {
        spIProductOnReference = spIProductOnThis;
    }
    *pusNewPartNumber = spIProductOnReference->GetPartNumber();
    *pbPartNumberHasChanged = *pusNewPartNumber != m_usBehaviorPartNumber ? TRUE : FALSE;
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::NeedsSpecialBehavior(const CATUnicodeString& usPsnNodeType,
                                                      const CATUnicodeString& usPartNumber,
                                                      unsigned char* pbNeedsSpecialBehavior,
                                                      CATUnicodeString* pusBehavior)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::NeedsSpecialBehavior");
    *pbNeedsSpecialBehavior = FALSE;
    *pusBehavior = "";
    QTBCatiaNodeBehaviorDefinitions* pCatiaNodeBehaviorDefinitions = NULL;
    if (FAILED(QTBSchemaUtil::GetCatiaNodeBehaviorDefinitionsPtr(&pCatiaNodeBehaviorDefinitions))) {
        return QTB_SUCCESS;
    }
    for (int i = 1; i <= pCatiaNodeBehaviorDefinitions->GetCatiaNodeBehaviorCount(); ++i) {
        QTBCatiaNodeBehavior* pCatiaNodeBehavior = NULL;
        QTB_CALL(pCatiaNodeBehaviorDefinitions->GetCatiaNodeBehaviorPtr, i, &pCatiaNodeBehavior);
        const CATUnicodeString& usPrefix = pCatiaNodeBehavior->GetPartNumberPrefix();
        if (pCatiaNodeBehavior->GetNodeType() != usPsnNodeType ||
            (!usPrefix.IsEmpty() && usPartNumber.SearchSubString(usPrefix, 0) != 0)) {
            continue;
        }
        const CATUnicodeString& usBehavior = pCatiaNodeBehavior->GetBehavior();
        if (usBehavior == usIGNORE_NODE || usBehavior == usSKIP_NODE) {
            QTB_TRACE("node type:[" << usPsnNodeType << "], part number[" << usPartNumber << "] -> index:[" << i
                                    << "], prefix[" << usPrefix << "] -> behavior:[" << usBehavior << "]");
            *pbNeedsSpecialBehavior = TRUE;
            *pusBehavior = usBehavior;
            return QTB_SUCCESS;
        }
        QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::NeedsSpecialBehavior -> illegal behavior string:[" << usBehavior << "]");
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::SetReferenceCatiaAttrsChecked(unsigned char bChecked)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::SetReferenceCatiaAttrsChecked");
    m_bReferenceCatiaAttrsChecked = bChecked;
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::GetReferenceCatiaAttrsChecked(unsigned char* pbChecked)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetReferenceCatiaAttrsChecked");
    QTB_ASSERT(pbChecked != NULL);
    *pbChecked = m_bReferenceCatiaAttrsChecked;
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::AddMessagesFromPdm(const CATListValQTBPdmMessage& Messages)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::AddMessagesFromPdm");
    m_MessagesFromPdm.Append(Messages);
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::GetMessagesFromPdm(CATListValQTBPdmMessage* pMessagesFromPdm)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetMessagesFromPdm");
    QTB_ASSERT(pMessagesFromPdm != NULL);
    *pMessagesFromPdm = m_MessagesFromPdm;
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::DeleteMessagesFromPdm()
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::DeleteMessagesFromPdm");
    m_MessagesFromPdm.RemoveAll();
    return QTB_SUCCESS;
}
