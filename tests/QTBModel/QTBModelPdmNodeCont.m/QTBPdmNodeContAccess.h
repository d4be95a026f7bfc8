#pragma once

#include "CATIDOMDocument.h"
#include "QTBEPdmNodeContOnPdmNodeCont.h"
#include "QTBTestSession.h"
#include "TIEQTBIPdmNodeCont.h"

// Session fixture that also reaches the steps of the container which are not operations of its interface.
class QTBPdmNodeContAccess : public QTBTestSession
{
protected:
    static QTBEPdmNodeContOnPdmNodeCont* Extension()
    {
        using Tie = TIEQTBIPdmNodeCont<CATDataTie<QTBIPdmNodeCont, QTBEPdmNodeContOnPdmNodeCont>>;
        const QTBIPdmNodeCont_var spIPdmNodeCont = GetPdmNodeCont();
        return static_cast<Tie*>(spIPdmNodeCont.Get())->Target();
    }

    static CATIDOMDocument_var Parse(const std::string& xml);

    // An object node that was created without a record.
    static CATBaseUnknown_var CreateObject(const char* key, unsigned char bAddToContainer = TRUE);
    static CATBaseUnknown_var CreateRelation(const char* key, unsigned char bAddToContainer = TRUE);

    static int CurrentActionIndex();
};
