#include "ProductDocuments.h"

#include <filesystem>
#include <system_error>

#include <fmt/format.h>

#include "CATDocument.h"
#include "CATIPrdLink.h"
#include "HostSession.h"
#include "HostText.h"
#include "QTBConstants.h"
#include "QTBDocUtil.h"
#include "QTBFileUtil.h"
#include "QTBILinkToQtb.h"
#include "QTBIPdmNode.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPsnNode.h"
#include "QTBInfoUtil.h"
#include "QTBPdmGraphUtil.h"
#include "QTBPdmSessionUtil.h"

namespace fs = std::filesystem;
using HostText::ToText;

namespace {

bool HasLinkState(const CATIProduct_var& spIProduct, CATPrdLinkState wanted)
{
    const CATIPrdLink_var spIPrdLink(spIProduct);
    CATPrdLinkState state = CATPrdLinkState::Loaded;
    return spIPrdLink != NULL_var && SUCCEEDED(spIPrdLink->GetLinkState(&state)) && state == wanted;
}

std::string GetFilePath(const CATIProduct_var& spIProduct)
{
    const CATIPrdLink_var spIPrdLink(spIProduct);
    CATUnicodeString usPath;
    return spIPrdLink != NULL_var && SUCCEEDED(spIPrdLink->GetLinkedFileName(&usPath)) ? ToText(usPath) : "";
}

// Why a document that the PDM system has a file of is to be saved: what it is compared by.
std::string ExplainFile(const CATIProduct_var& spIProduct, const QTBIPdmNode_var& spIPdmNode, bool isDirty)
{
    const std::string path = GetFilePath(spIProduct);
    if (path.empty()) {
        return "was never saved: there is no file to compare";
    }
    CATUnicodeString usPdmFileName;
    if (SUCCEEDED(
            QTBPdmGraphUtil::GetCatiaFileNodeInformation(spIPdmNode, &usPdmFileName, nullptr, nullptr, nullptr)) &&
        usPdmFileName.View() != ProductDocuments::GetFileName(spIProduct)) {
        return fmt::format("the PDM system has another file, {} ({})",
                           usPdmFileName.IsEmpty() ? "one without a name" : usPdmFileName.View(),
                           spIPdmNode->GetPdmKey().View());
    }
    CATDocument* pDocument = nullptr;
    if (SUCCEEDED(QTBDocUtil::CmiGetDocForProduct(spIProduct, spIProduct->GetPartNumber(), &pDocument)) &&
        pDocument->IsDirty()) {
        return "has changes that are not saved";
    }
    if (isDirty) {
        return "the file is not the one that was last exchanged with the PDM system: " + path;
    }
    std::error_code error;
    return fs::exists(path, error) ? "the file is as it was exchanged with the PDM system"
                                   : "no changes in session, and no file on disk";
}

} // namespace

ProductDocuments::Identity ProductDocuments::GetIdentity(const CATIProduct_var& spIProduct)
{
    const CATIProduct_var spIReference = spIProduct->GetReferenceProduct();
    if (spIReference != NULL_var) {
        return {spIReference.GetImpl(), ""};
    }
    return {nullptr, GetFilePath(spIProduct)};
}

bool ProductDocuments::IsComponent(const CATIProduct_var& spIProduct)
{
    return HasLinkState(spIProduct, CATPrdLinkState::Embedded);
}

std::string ProductDocuments::GetFileName(const CATIProduct_var& spIProduct)
{
    CATUnicodeString usFileName;
    return SUCCEEDED(QTBFileUtil::GetReferenceFileName(spIProduct, &usFileName, nullptr)) ? ToText(usFileName) : "";
}

std::string ProductDocuments::Explain(const CATIProduct_var& spIProduct, bool isDirty)
{
    const QTBILinkToQtb_var spILinkToQtb(spIProduct);
    const QTBIPsnNode_var spIPsnNode(spIProduct);
    if (HasLinkState(spIProduct, CATPrdLinkState::Broken)) {
        return "broken link: the document was not found, so nothing in the PDM system corresponds to it";
    }
    unsigned char bPdmNodeExists = FALSE;
    QTBIPdmNode_var spIPdmNode;
    HostSession::Require(spILinkToQtb->CatiaFilePdmNodeExists(&bPdmNodeExists, &spIPdmNode), ExitCode::Failure,
                         "PDM graph");
    if (bPdmNodeExists == FALSE) {
        return "not in the PDM system";
    }
    unsigned char bHasFile = FALSE;
    if (SUCCEEDED(QTBInfoUtil::PdmDocumentHasFile(spIPdmNode, &bHasFile)) && bHasFile == FALSE) {
        return fmt::format("the PDM system has no file of {}", spIPdmNode->GetPdmKey().View());
    }
    CATUnicodeString usPdmNodeType;
    unsigned char bIsCgr = FALSE;
    if (SUCCEEDED(spIPsnNode->GetPdmNodeType(&usPdmNodeType, nullptr, nullptr)) &&
        SUCCEEDED(QTBPdmSessionUtil::IsCatiaFileClass(QTB_CATIA_FILE_CLASS_CGR, usPdmNodeType, &bIsCgr)) &&
        bIsCgr != FALSE) {
        return "a shape, which is not saved";
    }
    unsigned char bIsArchiveRoot = FALSE;
    if (SUCCEEDED(spIPsnNode->IsCmiArchiveRoot(&bIsArchiveRoot, nullptr)) && bIsArchiveRoot != FALSE) {
        return isDirty ? "a document of the archive has changes" : "no document of the archive has changes";
    }
    return ExplainFile(spIProduct, spIPdmNode, isDirty);
}
