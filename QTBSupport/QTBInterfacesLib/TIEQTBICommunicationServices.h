#pragma once

#include "CATTie.h"
#include "QTBICommunicationServices.h"

// Interface object of QTBICommunicationServices; written by tools/generate-ties.
template <class Tie, class Target = CATOwnTarget>
class TIEQTBICommunicationServices : public Tie
{
public:
    using Tie::Tie;

    HRESULT CreateRelation(const CATUnicodeString& usRelationClass, const QTBIPdmObjNode_var& spLeftObject, const QTBIPdmObjNode_var& spRightObject, const CATUnicodeString& usRelationXml, CATIDOMDocument_var* pspAnswer) override
    {
        return Target::Of(*this)->CreateRelation(usRelationClass, spLeftObject, spRightObject, usRelationXml, pspAnswer);
    }

    HRESULT Delete(const QTBINodeAttributes_var& spItem, const CATUnicodeString* pusDeleteOption) override
    {
        return Target::Of(*this)->Delete(spItem, pusDeleteOption);
    }
};
