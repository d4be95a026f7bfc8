#include "QTBECommunicationServicesOnPdmStore.h"

#include "QTBPdmStoreComponent.h"

HRESULT QTBECommunicationServicesOnPdmStore::CreateRelation(const CATUnicodeString& usRelationClass,
                                                            const QTBIPdmObjNode_var& spLeftObject,
                                                            const QTBIPdmObjNode_var& spRightObject,
                                                            const CATUnicodeString& usRelationXml,
                                                            CATIDOMDocument_var* pspAnswer)
{
    if (spLeftObject == NULL_var || spRightObject == NULL_var) {
        return E_FAIL;
    }
    return static_cast<QTBPdmStoreComponent*>(GetImpl())->Answer(
        [&](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.CreateRelation(usRelationClass, spLeftObject->GetPdmKey(), spRightObject->GetPdmKey(),
                                        usRelationXml, receiver);
        },
        pspAnswer);
}

HRESULT QTBECommunicationServicesOnPdmStore::Delete(const QTBINodeAttributes_var& spItem,
                                                    const CATUnicodeString* pusDeleteOption)
{
    CATUnicodeString usKey;
    if (spItem == NULL_var || FAILED(spItem->GetKey(&usKey))) {
        return E_FAIL;
    }
    // The caller removes the item from the graph itself.
    return static_cast<QTBPdmStoreComponent*>(GetImpl())->GetStore().Delete(
        {usKey}, pusDeleteOption != nullptr ? *pusDeleteOption : CATUnicodeString(), {});
}
