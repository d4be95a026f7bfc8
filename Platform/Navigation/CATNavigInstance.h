#pragma once

#include "CATInterface_var.h"

class CATNavigBox;

// Place at which a navigation tree shows an object: the object and its navigation node there. Belongs to the tree.
class PLATFORM_API CATNavigInstance
{
public:
    // Makes the navigation node and associates it with this place. The object is not empty.
    CATNavigInstance(CATNavigBox* pBox, const CATBaseUnknown_var& spReference);
    CATNavigInstance(const CATNavigInstance&) = delete;
    CATNavigInstance& operator=(const CATNavigInstance&) = delete;
    // The node, which somebody may keep, has no associated instance any more.
    ~CATNavigInstance();

    // The object that is shown.
    const CATBaseUnknown_var& GetReference() const { return m_spReference; }
    const CATBaseUnknown_var& GetNode() const { return m_spNode; }
    CATNavigBox* GetBox() const { return m_pBox; }

private:
    CATNavigBox* m_pBox;
    CATBaseUnknown_var m_spReference;
    CATBaseUnknown_var m_spNode;
};
