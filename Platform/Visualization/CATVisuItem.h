#pragma once

#include "CATInterface_var.h"

class CATRep;

// One object in a displayed 3D view.
struct CATVisuItem
{
    CATBaseUnknown_var spObject;
    // Belongs to the view and stays until the object changes.
    const CATRep* pRep;
    // What the object shows besides while it is selected, null for nothing.
    const CATRep* pSelectionRep;
    // The colour of the user, else that of the representation.
    unsigned int color;
    unsigned int opacity;
};
