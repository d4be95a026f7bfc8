#include "CATNavigInstance.h"

#include "CATINavigModify.h"
#include "CATNavigNode.h"

CATNavigInstance::CATNavigInstance(CATNavigBox* pBox, const CATBaseUnknown_var& spReference)
    : m_pBox(pBox), m_spReference(spReference), m_spNode(CATNavigNode::Create(spReference))
{
    CATINavigModify_var(m_spNode)->SetAssociatedInstance(this);
}

CATNavigInstance::~CATNavigInstance()
{
    CATINavigModify_var(m_spNode)->SetAssociatedInstance(nullptr);
}
