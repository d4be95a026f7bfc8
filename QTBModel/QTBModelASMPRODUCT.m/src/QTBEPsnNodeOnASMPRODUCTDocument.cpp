#include <algorithm>

#include "CATDocument.h"
#include "CATIPrdProperties.h"
#include "QTBArchiveUtil.h"
#include "QTBCheck.h"
#include "QTBDesignTableUtil.h"
#include "QTBDocUtil.h"
#include "QTBEPsnNodeOnASMPRODUCT.h"
#include "QTBFileUtil.h"
#include "QTBILinkToQtb.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBInfoUtil.h"
#include "QTBMessageUtil.h"
#include "QTBPdmGraphUtil.h"
#include "QTBPdmSessionUtil.h"
#include "QTBPsnTreeUtil.h"

namespace {

// The attributes that are written: how the reference's value is read and set, and the texts of the two calls.
struct ReferenceAttribute
{
    QTBPsnAttrType type;
    HRESULT (CATIProduct::*get)(CATUnicodeString*);
    const char* getText;
    HRESULT (CATIPrdProperties::*set)(const CATUnicodeString&);
    const char* setText;
};

constexpr ReferenceAttribute REFERENCE_ATTRIBUTES[] = {
    {QTB_PSNATTR_NOMENCLATURE, &CATIProduct::GetNomenclature, "spIProductOnThis->GetNomenclature",
     &CATIPrdProperties::SetNomenclature, "spIPrdPropertiesOnThis->SetNomenclature"},
    {QTB_PSNATTR_DESCRIPTION_REF, &CATIProduct::GetDescriptionRef, "spIProductOnThis->GetDescriptionRef",
     &CATIPrdProperties::SetDescriptionRef, "spIPrdPropertiesOnThis->SetDescriptionRef"},
    {QTB_PSNATTR_DEFINITION, &CATIProduct::GetDefinition, "spIProductOnThis->GetDefinition",
     &CATIPrdProperties::SetDefinition, "spIPrdPropertiesOnThis->SetDefinition"},
    {QTB_PSNATTR_REVISION, &CATIProduct::GetRevision, "spIProductOnThis->GetRevision", &CATIPrdProperties::SetRevision,
     "spIPrdPropertiesOnThis->SetRevision"}};

void TraceSame(const CATUnicodeString& usOldValue, const CATUnicodeString& usNewValue)
{
    QTB_TRACE("<" << usOldValue << "> / <" << usNewValue << "> (same).");
}

void TraceChange(const CATUnicodeString& usOldValue, const CATUnicodeString& usNewValue)
{
    QTB_TRACE("<" << usOldValue << "> -> <" << usNewValue << ">");
}

// Whether the file name ends with that extension, given in upper case.
bool HasExtension(const CATUnicodeString& usFileName, std::string_view upperCaseExtension)
{
    CATUnicodeString usExtension;
    if (FAILED(QTBFileUtil::GetFileExtensionFromFileName(usFileName, &usExtension))) {
        return false;
    }
    const std::string_view extension = usExtension.View();
    return std::equal(
        extension.begin(), extension.end(), upperCaseExtension.begin(), upperCaseExtension.end(),
        [](char a, char b) { return (a >= 'a' && a <= 'z' ? static_cast<char>(a - 'a' + 'A') : a) == b; });
}

} // namespace

HRESULT QTBEPsnNodeOnASMPRODUCT::SetStdCatiaAttribute(const QTBPsnAttrType& PsnAttrType,
                                                      const CATUnicodeString& usValue, unsigned char* pbAttrChanged,
                                                      const unsigned char& bLoadDocument)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::SetStdCatiaAttribute");
    QTB_ASSERT((PsnAttrType >= QTB_PSNATTR_FIRST) && (PsnAttrType <= QTB_PSNATTR_LAST));
    if (pbAttrChanged != NULL) {
        *pbAttrChanged = FALSE;
    }
    QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::SetStdCatiaAttribute -> setting <" << static_cast<int>(PsnAttrType) << "> to <"
                                                                           << usValue << ">: ");
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    // Whether it is an instance makes no difference: what only an instance has is not written there either.
    spIProductOnThis->IsReference();
    switch (PsnAttrType) {
    case QTB_PSNATTR_PART_NUMBER:
        return LeavePartNumber(spIProductOnThis, usValue, bLoadDocument);
    case QTB_PSNATTR_INSTANCE_NAME:
        QTB_TRACE("-> the instance name is only valid for instance PSN nodes !");
        return QTB_QUIET_FAILURE;
    case QTB_PSNATTR_DESCRIPTION_INST:
        QTB_TRACE("-> the instance description is only valid for instance PSN nodes !");
        return QTB_QUIET_FAILURE;
    default:
        return SetReferenceAttribute(spIProductOnThis, PsnAttrType, usValue, pbAttrChanged, bLoadDocument);
    }
}

HRESULT QTBEPsnNodeOnASMPRODUCT::LeavePartNumber(const CATIProduct_var& spIProductOnThis,
                                                 const CATUnicodeString& usValue, const unsigned char& bLoadDocument)
{
    CATIProduct_var spIProductOnReference;
    QTB_CALL(QTBPsnTreeUtil::GetReferencePsnNode, spIProductOnThis, &spIProductOnReference, bLoadDocument, FALSE);
    const CATUnicodeString usPartNumber = spIProductOnReference->GetPartNumber();
    if (usPartNumber == usValue) {
        TraceSame(usPartNumber, usValue);
        return QTB_SUCCESS;
    }
    TraceChange(usPartNumber, usValue);
    QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::SetStdCatiaAttribute -> not setting the CATIA part number to '"
              << usValue << "' because it is an identifying attribute.");
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::SetReferenceAttribute(const CATIProduct_var& spIProductOnThis,
                                                       const QTBPsnAttrType& PsnAttrType,
                                                       const CATUnicodeString& usValue, unsigned char* pbAttrChanged,
                                                       const unsigned char& bLoadDocument)
{
    CATIProduct_var spIProductOnReference;
    QTB_CALL(QTBPsnTreeUtil::GetReferencePsnNode, spIProductOnThis, &spIProductOnReference, bLoadDocument, FALSE);
    const CATIPrdProperties_var spIPrdPropertiesOnThis(spIProductOnReference);
    QTB_INTERFACE(spIPrdPropertiesOnThis);
    const auto* pAttribute =
        std::find_if(std::begin(REFERENCE_ATTRIBUTES), std::end(REFERENCE_ATTRIBUTES),
                     [&](const ReferenceAttribute& attribute) { return attribute.type == PsnAttrType; });
    CATUnicodeString usOldValue;
    // A product gives the properties of its reference.
    QTB_RESULT_AS(pAttribute->getText, ((*spIProductOnThis).*pAttribute->get)(&usOldValue));
    if (usOldValue == usValue) {
        TraceSame(usOldValue, usValue);
        return QTB_SUCCESS;
    }
    TraceChange(usOldValue, usValue);
    QTB_RESULT_AS(pAttribute->setText, ((*spIPrdPropertiesOnThis).*pAttribute->set)(usValue));
    if (pbAttrChanged != NULL) {
        *pbAttrChanged = TRUE;
    }
    return SetReferenceDocumentDirty(spIProductOnThis, bLoadDocument);
}

HRESULT QTBEPsnNodeOnASMPRODUCT::SetReferenceDocumentDirty(const CATIProduct_var& spIProductOnThis,
                                                           const unsigned char& bLoadDocument)
{
    CATIProduct_var spIProductOnReference;
    QTB_CALL(QTBPsnTreeUtil::GetReferencePsnNode, spIProductOnThis, &spIProductOnReference, bLoadDocument, FALSE);
    CATDocument* pDocument = NULL;
    if (SUCCEEDED(QTBDocUtil::CmiGetDocForProduct(spIProductOnReference, spIProductOnReference->GetPartNumber(),
                                                  &pDocument))) {
        pDocument->SetDirty(TRUE);
    } else {
        QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::SetStdCatiaAttribute -> "
                  "could not retrieve document, not setting it dirty !");
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::DocumentIsDirty(unsigned char* pbIsDirty, unsigned char* pbHasDesignTables)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::DocumentIsDirty");
    QTB_ASSERT(pbIsDirty != NULL);
    *pbIsDirty = FALSE;
    const QTBILinkToQtb_var spILinkToQtbOnThis(this);
    QTB_INTERFACE(spILinkToQtbOnThis);
    unsigned char bPdmNodeExists = FALSE;
    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(spILinkToQtbOnThis->CatiaFilePdmNodeExists, &bPdmNodeExists, &spIPdmNode);
    if (bPdmNodeExists == FALSE) {
        *pbIsDirty = TRUE;
        return QTB_SUCCESS;
    }
    unsigned char bHasFile = FALSE;
    QTB_CALL(QTBInfoUtil::PdmDocumentHasFile, spIPdmNode, &bHasFile);
    if (bHasFile == FALSE) {
        *pbIsDirty = TRUE;
        return QTB_SUCCESS;
    }
    CATUnicodeString usPdmNodeType;
    QTB_CALL(GetPdmNodeType, &usPdmNodeType, NULL, NULL);
    unsigned char bIsCgr = FALSE;
    QTB_CALL(QTBPdmSessionUtil::IsCatiaFileClass, QTB_CATIA_FILE_CLASS_CGR, usPdmNodeType, &bIsCgr);
    if (bIsCgr != FALSE) {
        return QTB_SUCCESS;
    }
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    unsigned char bIsCmiArchiveRoot = FALSE;
    QTB_CALL(IsCmiArchiveRoot, &bIsCmiArchiveRoot, NULL);
    if (bIsCmiArchiveRoot != FALSE) {
        if (FAILED(QTBArchiveUtil::IsArchiveDirty(spIProductOnThis, pbIsDirty))) {
            QTB_CALL(PsnDocumentIsDirty, spIProductOnThis, pbIsDirty);
        }
        return QTB_SUCCESS;
    }
    QTB_CALL(PsnDocumentIsDirty, spIProductOnThis, pbIsDirty);
    if (*pbIsDirty == FALSE && pbHasDesignTables != NULL) {
        CATListValQTBDesignTable TablesInPdm;
        CATListValQTBDesignTable TablesNotInPdm;
        CATListValQTBDesignTable TablesInDocument;
        CATListValCATBaseUnknown_var PdmNodes;
        QTB_CALL(QTBDesignTableUtil::GetDesignTableInformation, spIProductOnThis, &TablesInPdm, &TablesNotInPdm,
                 &TablesInDocument, &PdmNodes);
        if (TablesInPdm.Size() > 0 || TablesNotInPdm.Size() > 0 || TablesInDocument.Size() > 0 || PdmNodes.Size() > 0) {
            *pbHasDesignTables = TRUE;
        }
    }
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::PsnDocumentIsDirty(const CATIProduct_var& spIProduct, unsigned char* pbIsDirty)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::PsnDocumentIsDirty");
    QTB_ASSERT(pbIsDirty != NULL);
    QTB_INTERFACE(spIProduct);
    *pbIsDirty = FALSE;
    CATUnicodeString usReferenceFileName;
    if (FAILED(QTBFileUtil::GetReferenceFileName(spIProduct, &usReferenceFileName, NULL)) ||
        usReferenceFileName.IsEmpty()) {
        return QTB_SUCCESS;
    }
    const QTBILinkToQtb_var spILinkToQtb(spIProduct);
    QTB_INTERFACE(spILinkToQtb);
    unsigned char bPdmNodeExists = FALSE;
    QTBIPdmNode_var spIPdmNode;
    QTB_CALL(spILinkToQtb->CatiaFilePdmNodeExists, &bPdmNodeExists, &spIPdmNode);
    if (bPdmNodeExists != FALSE) {
        CATUnicodeString usPdmFileName;
        QTB_CALL(QTBPdmGraphUtil::GetCatiaFileNodeInformation, spIPdmNode, &usPdmFileName, NULL, NULL, NULL);
        if (usPdmFileName != usReferenceFileName) {
            *pbIsDirty = TRUE;
            return QTB_SUCCESS;
        }
    }
    CATUnicodeString usPath;
    CATDocument* pDocument = NULL;
    bool isShownFromShape = false;
    if (SUCCEEDED(QTBDocUtil::CmiGetDocForProduct(spIProduct, spIProduct->GetPartNumber(), &pDocument))) {
        usPath = pDocument->GetStorageName();
        isShownFromShape = HasExtension(usReferenceFileName, "CATPART") && HasExtension(usPath, "CGR");
    }
    if (pDocument == NULL || isShownFromShape) {
        QTB_CALL(QTBFileUtil::CreateExMapFilePath, usReferenceFileName, &usPath);
    }
    QTB_CALL(QTBDocUtil::DocumentNeedsToBeSavedInPdm, usPath, pbIsDirty, FALSE, FALSE);
    return QTB_SUCCESS;
}

HRESULT QTBEPsnNodeOnASMPRODUCT::GetReferenceDocumentPtr(CATDocument** ppDocument, unsigned char bTraceDocument)
{
    QTB_SCOPE("QTBEPsnNodeOnASMPRODUCT::GetReferenceDocumentPtr");
    QTB_ASSERT(ppDocument != NULL);
    QTB_ASSERT(*ppDocument == NULL);
    const CATIProduct_var spIProductOnThis(this);
    QTB_INTERFACE(spIProductOnThis);
    unsigned char bIsEmbeddedComponent = FALSE;
    QTB_CALL(QTBPsnTreeUtil::IsEmbeddedComponentNode, spIProductOnThis, &bIsEmbeddedComponent);
    if (bIsEmbeddedComponent != FALSE) {
        if (FAILED(QTBPsnTreeUtil::GetShapeRepDocumentPtrFromPsnNode(spIProductOnThis, ppDocument, FALSE))) {
            return CATError::GetReturn(2, QTBMessageUtil::PsnEmbeddedComponentNotSupported(spIProductOnThis), NULL,
                                       __FILE__, __LINE__);
        }
    } else if (FAILED(QTBPsnTreeUtil::GetDocumentPtrFromPsnNode(spIProductOnThis, ppDocument, TRUE, FALSE))) {
        CATUnicodeString usPsnNodeType;
        if (FAILED(GetPsnNodeType(&usPsnNodeType, NULL))) {
            QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::GetReferenceDocumentPtr -> GetPsnNodeType FAILED");
        }
        if (usPsnNodeType != usCATPRODUCT) {
            return QTB_QUIET_FAILURE;
        }
        CATUnicodeString usInstanceName;
        if (FAILED(spIProductOnThis->GetPrdInstanceName(&usInstanceName))) {
            QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::GetReferenceDocumentPtr -> "
                      "spIProductOnThis->GetPrdInstanceName FAILED");
        }
        return CATError::GetReturn(2, QTBMessageUtil::PsnNodeRefDocNotFoundError(usInstanceName), NULL, __FILE__,
                                   __LINE__);
    }
    QTB_ASSERT(*ppDocument != NULL);
    if (bTraceDocument != FALSE) {
        CATUnicodeString usDocType;
        QTB_CALL(QTBFileUtil::GetFileType, *ppDocument, &usDocType);
        QTB_TRACE("QTBEPsnNodeOnASMPRODUCT::GetReferenceDocumentPtr -> usDocType:"
                  << usDocType << ", StorageName:" << (*ppDocument)->GetStorageName()
                  << ", DisplayName:" << (*ppDocument)->GetDisplayName());
    }
    return QTB_SUCCESS;
}
