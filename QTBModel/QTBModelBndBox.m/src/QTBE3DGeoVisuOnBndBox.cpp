#include "QTBE3DGeoVisuOnBndBox.h"

#include "CATMathPoint.h"
#include "CATMathVector.h"
#include "QTBBndBoxRep.h"
#include "QTBCheck.h"
#include "QTBIBndBox.h"

namespace {

// Colours of the view's palette.
constexpr unsigned int COLOR = 244;
constexpr unsigned int COLOR_MARKED = 245;

} // namespace

CATRep* QTBE3DGeoVisuOnBndBox::BuildRep()
{
    QTB_SCOPE("QTBE3DGeoVisuOnBndBox::BuildRep");
    const QTBIBndBox_var spIBndBox(this);
    if (spIBndBox == NULL_var) {
        return NULL;
    }
    CATMathPoint Corner;
    CATMathVector FirstEdge;
    CATMathVector SecondEdge;
    CATMathVector ThirdEdge;
    spIBndBox->GetCorner(Corner);
    spIBndBox->GetFirstEdge(FirstEdge);
    spIBndBox->GetSecondEdge(SecondEdge);
    spIBndBox->GetThirdEdge(ThirdEdge);
    auto* pRep = new QTBBndBoxRep(Corner, FirstEdge, SecondEdge, ThirdEdge, CAT3DCuboidRep::FacesAndEdges);
    pRep->SetColor(spIBndBox->IsMarked() != FALSE ? COLOR_MARKED : COLOR);
    return pRep;
}

CATRep* QTBE3DGeoVisuOnBndBox::BuildCoarseRep()
{
    QTB_SCOPE("QTBE3DGeoVisuOnBndBox::BuildCoarseRep");
    return NULL;
}

CATRep* QTBE3DGeoVisuOnBndBox::BuildPathRep(CATPathElement*)
{
    QTB_SCOPE("QTBE3DGeoVisuOnBndBox::BuildPathRep");
    return NULL;
}
