#include "ProductLinks.h"

#include <fmt/format.h>

#include "HostSession.h"
#include "HostText.h"
#include "QTBConstants.h"
#include "QTBILinkToQtb.h"
#include "QTBINodeAttributes.h"
#include "QTBIPdmObjNode.h"
#include "QTBIPdmRelNode.h"
#include "QTBIPsnNode.h"
#include "QTBInfoUtil.h"
#include "QTBLoadManager.h"

using HostText::ToText;

namespace {

// Key of a PDM node, empty for an empty handle.
template <class Interface>
std::string GetKey(const CATInterface_var<Interface>& spNode)
{
    CATUnicodeString usKey;
    const QTBINodeAttributes_var spINodeAttributes(spNode);
    if (spINodeAttributes != NULL_var) {
        spINodeAttributes->GetKey(&usKey);
    }
    return ToText(usKey);
}

// The relation that has the product's father and instance name and places another part.
std::string DescribeRejection(const std::vector<ProductTree::Place>& places, const ProductTree::Place& place)
{
    const CATUnicodeString usFather = places[static_cast<std::size_t>(place.father)].spIProduct->GetPartNumber();
    CATUnicodeString usName;
    QTBIPdmRelNode_var spIPdmRelNode;
    QTBIPdmObjNode_var spIPdmObjNodeOnOther;
    if (FAILED(place.spIProduct->GetPrdInstanceName(&usName)) ||
        FAILED(g_QTBLoadManager.GetPdmRelationForInstance(usFather, usName, &spIPdmRelNode)) ||
        FAILED(spIPdmRelNode->GetRightObject(&spIPdmObjNodeOnOther))) {
        return "";
    }
    CATUnicodeString usPartNumber;
    QTBInfoUtil::GetCatiaPartNumberFromPdm(spIPdmObjNodeOnOther, &usPartNumber, FALSE, TRUE);
    return fmt::format("rejected {}: it places part number {}", GetKey(spIPdmRelNode), usPartNumber.View());
}

} // namespace

ProductLinks::Correspondence ProductLinks::Find(const std::vector<ProductTree::Place>& places,
                                                const ProductTree::Place& place)
{
    const QTBILinkToQtb_var spILinkToQtb(place.spIProduct);
    const QTBIPsnNode_var spIPsnNode(place.spIProduct);
    if (spILinkToQtb == NULL_var || spIPsnNode == NULL_var) {
        throw HostError(ExitCode::Failure, "products do not answer the PDM interfaces");
    }
    unsigned char bExist = FALSE;
    QTBIPdmRelNode_var spIPdmRelNode;
    QTBIPdmObjNode_var spIPdmObjNodeOnPart;
    QTBIPdmObjNode_var spIPdmObjNodeOnFile;
    HostSession::Require(
        spILinkToQtb->CorrespondingPdmNodesExist(&bExist, &spIPdmRelNode, &spIPdmObjNodeOnPart, &spIPdmObjNodeOnFile),
        ExitCode::Failure, place.path);
    Correspondence found{NOT_IN_PDM, "", GetKey(spIPdmObjNodeOnPart), GetKey(spIPdmRelNode),
                         GetKey(spIPdmObjNodeOnFile)};
    CATUnicodeString usType;
    if (SUCCEEDED(spIPsnNode->GetPsnNodeType(&usType, nullptr)) && usType == usBROKENLINK) {
        found.reason = BROKEN_LINK;
    } else if (!found.relation.empty()) {
        found.reason = BY_INSTANCE;
    } else if (!found.part.empty()) {
        found.reason = BY_PART_NUMBER;
    }
    if (found.relation.empty() && place.father >= 0) {
        found.note = DescribeRejection(places, place);
    }
    unsigned char bFileRelationExists = FALSE;
    unsigned char bDiffers = FALSE;
    if (SUCCEEDED(spILinkToQtb->FileStrucPdmNodeExists(&bFileRelationExists, nullptr, &bDiffers)) &&
        bDiffers != FALSE) {
        found.note += found.note.empty() ? "" : "; ";
        found.note += "name or version of the file differs";
    }
    return found;
}

std::string ProductLinks::Describe(const Correspondence& found)
{
    std::string text = found.reason;
    const std::string& structure = found.relation.empty() ? found.part : found.relation;
    text += structure.empty() ? "" : ": " + structure;
    text += found.file.empty() ? "" : ", file " + found.file;
    text += found.note.empty() ? "" : " (" + found.note + ")";
    return text;
}
