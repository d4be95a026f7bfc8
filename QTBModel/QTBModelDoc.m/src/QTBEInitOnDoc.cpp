#include "QTBEInitOnDoc.h"

#include "CATInstantiateComponent.h"
#include "QTBCheck.h"
#include "QTBGlobVarsUtil.h"
#include "QTBIPdmNodeCont.h"
#include "QTBIRepNodeCont.h"
#include "SpecBindNativeFormat.h"

QTBEInitOnDoc::~QTBEInitOnDoc()
{
    ReleaseRepNodeCont();
}

void QTBEInitOnDoc::ReleaseRepNodeCont()
{
    if (m_pRepNodeCont != NULL) {
        m_pRepNodeCont->Release();
        m_pRepNodeCont = NULL;
    }
}

void QTBEInitOnDoc::Init(unsigned char)
{
    QTB_SCOPE("QTBEInitOnDoc::Init");
    try {
        InitGuarded();
    } catch (const CATXHException& exception) {
        QTB_TRACE("QTBEInitOnDoc::Init FAILED");
        QTB_TRACE(exception.GetError()->GetNLSMessage());
    }
}

void QTBEInitOnDoc::InitGuarded()
{
    SpecBindNativeFormat("QTBRepNode");

    QTBIPdmNodeCont_var spIPdmNodeCont;
    QTB_RAISE_CALL(QTBGlobVarsUtil::GetGlobalPdmNodeContainer, &spIPdmNodeCont);
    QTB_RAISE_CALL(spIPdmNodeCont->CreateDefaultRootNode);

    // There is one already when the frame initialises a document twice.
    ReleaseRepNodeCont();
    QTB_RAISE_CALL(::CATInstantiateComponent, "QTBRepNodeCont", CLSID_CATBaseUnknown,
                   reinterpret_cast<void**>(&m_pRepNodeCont));
    const QTBIRepNodeCont_var spIRepNodeCont(m_pRepNodeCont);
    QTB_RAISE_INTERFACE(spIRepNodeCont);
    QTB_RAISE_CALL(spIRepNodeCont->CreateDefaultRootNode);
}

CATBaseUnknown* QTBEInitOnDoc::GetRootContainer(const char* interfaceName)
{
    QTB_SCOPE("QTBEInitOnDoc::GetRootContainer");
    return m_pRepNodeCont != NULL ? m_pRepNodeCont->QueryInterface(interfaceName) : NULL;
}
