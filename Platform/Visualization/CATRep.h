#pragma once

#include "PlatformExport.h"

// What the 3D view draws for an object. Made by the object (CATI3DGeoVisu) and owned by whoever asked for it.
class PLATFORM_API CATRep
{
public:
    CATRep() = default;
    CATRep(const CATRep&) = delete;
    CATRep& operator=(const CATRep&) = delete;
    virtual ~CATRep();

    // Number of a colour of the view's palette; 0, the view's own colour, as long as none is set.
    void SetColor(unsigned int color) { m_Color = color; }
    unsigned int GetColor() const { return m_Color; }

private:
    unsigned int m_Color = 0;
};
