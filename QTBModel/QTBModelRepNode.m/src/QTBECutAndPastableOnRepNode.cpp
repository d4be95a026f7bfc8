#include "QTBECutAndPastableOnRepNode.h"

#include <memory>

#include "QTBCheck.h"

namespace {

CATListPtrCATFormat* ListRepNodeFormat()
{
    auto pFormats = std::make_unique<CATListPtrCATFormat>();
    pFormats->Append(CATFormat::GetRegisteredFormat("QTBRepNode"));
    return pFormats.release();
}

} // namespace

CATListPtrCATFormat* QTBECutAndPastableOnRepNode::ListExtractFormats()
{
    QTB_SCOPE("QTBECutAndPastableOnRepNode::ListExtractFormats");
    return ListRepNodeFormat();
}

int QTBECutAndPastableOnRepNode::BoundaryExtract(CATListValCATBaseUnknown_var&, const CATFormat*)
{
    QTB_SCOPE("QTBECutAndPastableOnRepNode::BoundaryExtract");
    return 0;
}

CATBaseUnknown_var QTBECutAndPastableOnRepNode::Extract(const CATFormat*)
{
    QTB_SCOPE("QTBECutAndPastableOnRepNode::Extract");
    return NULL_var;
}

CATListPtrCATFormat* QTBECutAndPastableOnRepNode::ListPasteFormats()
{
    QTB_SCOPE("QTBECutAndPastableOnRepNode::ListPasteFormats");
    return ListRepNodeFormat();
}

CATListValCATBaseUnknown_var QTBECutAndPastableOnRepNode::Paste(const CATListValCATBaseUnknown_var&, const CATFormat*)
{
    QTB_SCOPE("QTBECutAndPastableOnRepNode::Paste");
    return {};
}

int QTBECutAndPastableOnRepNode::Create(const CATBaseUnknown_var&, const CATFormat*)
{
    QTB_SCOPE("QTBECutAndPastableOnRepNode::Create");
    return 0;
}

int QTBECutAndPastableOnRepNode::Update(const CATBaseUnknown_var&, const CATFormat*)
{
    QTB_SCOPE("QTBECutAndPastableOnRepNode::Update");
    return 0;
}

CATListPtrCATFormat* QTBECutAndPastableOnRepNode::ListLinkFormats()
{
    QTB_SCOPE("QTBECutAndPastableOnRepNode::ListLinkFormats");
    return ListRepNodeFormat();
}

CATListValCATBaseUnknown_var QTBECutAndPastableOnRepNode::Link(const CATListValCATBaseUnknown_var&, const CATFormat*)
{
    QTB_SCOPE("QTBECutAndPastableOnRepNode::Link");
    return {};
}

CATListPtrCATFormat* QTBECutAndPastableOnRepNode::ListRemoveFormats()
{
    QTB_SCOPE("QTBECutAndPastableOnRepNode::ListRemoveFormats");
    return ListRepNodeFormat();
}

int QTBECutAndPastableOnRepNode::BoundaryRemove(CATListValCATBaseUnknown_var&, const CATFormat*)
{
    QTB_SCOPE("QTBECutAndPastableOnRepNode::BoundaryRemove");
    return 0;
}

int QTBECutAndPastableOnRepNode::Remove(const CATFormat*)
{
    QTB_SCOPE("QTBECutAndPastableOnRepNode::Remove");
    return 0;
}
