#include "QTBEPdmRequestsOnPdmStore.h"

#include <string>
#include <vector>

#include "QTBConstants.h"
#include "QTBPdmStoreComponent.h"

namespace {

std::vector<CATUnicodeString> ToVector(const CATListValCATUnicodeString& Texts)
{
    return {Texts.begin(), Texts.end()};
}

std::vector<std::string> ToPaths(const CATListValCATUnicodeString& Texts)
{
    std::vector<std::string> paths;
    for (const CATUnicodeString& usText : Texts) {
        paths.emplace_back(usText.View());
    }
    return paths;
}

} // namespace

QTBPdmStore& QTBEPdmRequestsOnPdmStore::GetStore() const
{
    return static_cast<QTBPdmStoreComponent*>(GetImpl())->GetStore();
}

HRESULT
QTBEPdmRequestsOnPdmStore::Answer(const std::function<HRESULT(QTBPdmStore&, const QTBPdmStore::Receiver&)>& request,
                                  CATIDOMDocument_var* pspAnswer) const
{
    return static_cast<QTBPdmStoreComponent*>(GetImpl())->Answer(request, pspAnswer);
}

HRESULT QTBEPdmRequestsOnPdmStore::GetItems(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer)
{
    return Answer([&](QTBPdmStore& store,
                      const QTBPdmStore::Receiver& receiver) { return store.GetItems(ToVector(Keys), receiver); },
                  pspAnswer);
}

HRESULT QTBEPdmRequestsOnPdmStore::Query(const CATUnicodeString& usClassName,
                                         const CATListValCATUnicodeString& AttrNames,
                                         const CATListValCATUnicodeString& AttrValues,
                                         const unsigned char& bNewestVersionsOnly, CATIDOMDocument_var* pspAnswer)
{
    if (AttrNames.Size() != AttrValues.Size()) {
        return E_FAIL;
    }
    QTBStoreQuery query;
    query.className = usClassName;
    query.newestVersionsOnly = bNewestVersionsOnly != FALSE;
    for (int i = 1; i <= AttrNames.Size(); ++i) {
        query.conditions.push_back({AttrNames[i], AttrValues[i]});
    }
    return Answer(
        [&query](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) { return store.Query(query, receiver); },
        pspAnswer);
}

HRESULT QTBEPdmRequestsOnPdmStore::Expand(const CATListValCATUnicodeString& Keys,
                                          const CATListValQTBNodeRelationInfo& Relations, const int& iLevels,
                                          CATIDOMDocument_var* pspAnswer)
{
    QTBStoreExpansion expansion;
    expansion.keys = ToVector(Keys);
    expansion.levels = iLevels;
    for (const QTBNodeRelationInfo& info : Relations) {
        expansion.relations.push_back({info.GetRelationName(), info.GetRelationDirection() == usLEFT_TO_RIGHT});
    }
    return Answer([&expansion](QTBPdmStore& store,
                               const QTBPdmStore::Receiver& receiver) { return store.Expand(expansion, receiver); },
                  pspAnswer);
}

HRESULT QTBEPdmRequestsOnPdmStore::CheckOut(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer)
{
    return Answer([&](QTBPdmStore& store,
                      const QTBPdmStore::Receiver& receiver) { return store.CheckOut(ToVector(Keys), receiver); },
                  pspAnswer);
}

HRESULT QTBEPdmRequestsOnPdmStore::CheckIn(const CATListValCATUnicodeString& Keys,
                                           const CATListValCATUnicodeString& FilePaths, CATIDOMDocument_var* pspAnswer)
{
    return Answer(
        [&](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.CheckIn(ToVector(Keys), ToPaths(FilePaths), receiver);
        },
        pspAnswer);
}

HRESULT QTBEPdmRequestsOnPdmStore::Promote(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer)
{
    return Answer([&](QTBPdmStore& store,
                      const QTBPdmStore::Receiver& receiver) { return store.Promote(ToVector(Keys), receiver); },
                  pspAnswer);
}

HRESULT QTBEPdmRequestsOnPdmStore::Revise(const CATListValCATUnicodeString& Keys, CATIDOMDocument_var* pspAnswer)
{
    return Answer([&](QTBPdmStore& store,
                      const QTBPdmStore::Receiver& receiver) { return store.Revise(ToVector(Keys), receiver); },
                  pspAnswer);
}

HRESULT QTBEPdmRequestsOnPdmStore::UpdateAttributes(const CATUnicodeString& usKey,
                                                    const CATUnicodeString& usAttributesXml,
                                                    CATIDOMDocument_var* pspAnswer)
{
    return Answer(
        [&](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.UpdateAttributes(usKey, usAttributesXml, receiver);
        },
        pspAnswer);
}

HRESULT QTBEPdmRequestsOnPdmStore::CreateObject(const CATUnicodeString& usClassName, const CATUnicodeString& usKey,
                                                const CATUnicodeString& usAttributesXml, CATIDOMDocument_var* pspAnswer)
{
    return Answer(
        [&](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.CreateObject(usClassName, usKey, usAttributesXml, receiver);
        },
        pspAnswer);
}

HRESULT QTBEPdmRequestsOnPdmStore::DeleteItems(const CATListValCATUnicodeString& Keys,
                                               const CATUnicodeString* pusDeleteOption, CATIDOMDocument_var* pspAnswer)
{
    const CATUnicodeString usOption = pusDeleteOption != nullptr ? *pusDeleteOption : CATUnicodeString();
    return Answer(
        [&](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.Delete(ToVector(Keys), usOption, receiver);
        },
        pspAnswer);
}

HRESULT QTBEPdmRequestsOnPdmStore::InvokeFunction(const CATUnicodeString& usFunctionName,
                                                  const CATListValCATUnicodeString& ArgNames,
                                                  const CATListValCATUnicodeString& ArgValues,
                                                  CATIDOMDocument_var* pspAnswer)
{
    if (ArgNames.Size() != ArgValues.Size()) {
        return E_FAIL;
    }
    QTBPdmStore::Arguments arguments;
    for (int i = 1; i <= ArgNames.Size(); ++i) {
        arguments.emplace_back(ArgNames[i], ArgValues[i]);
    }
    return Answer(
        [&](QTBPdmStore& store, const QTBPdmStore::Receiver& receiver) {
            return store.Invoke(usFunctionName, arguments, receiver);
        },
        pspAnswer);
}

HRESULT QTBEPdmRequestsOnPdmStore::FetchFile(const CATUnicodeString& usKey, const CATUnicodeString& usPath)
{
    return GetStore().FetchFile(usKey, std::string(usPath.View()));
}
