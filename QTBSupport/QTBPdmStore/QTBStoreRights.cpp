#include "QTBStoreRights.h"

#include <string_view>

#include "QTBStoreClass.h"
#include "QTBStoreFailure.h"
#include "QTBStoreItem.h"
#include "QTBStoreLifecycle.h"

QTBStoreRights QTBStoreRights::Of(const QTBStoreObject& object, const QTBStoreClass& objectClass,
                                  const QTBStoreLifecycle& lifecycle, const CATUnicodeString& usUser)
{
    const bool isCheckedOut = !object.checkedOutBy.empty();
    const bool isMine = isCheckedOut && usUser.View() == object.checkedOutBy;
    const bool isFree = !isCheckedOut || isMine;
    QTBStoreRights rights;
    rights.checkIn = isMine;
    if (object.stateId == 0) {
        rights.changeStructure = isFree;
        rights.edit = isFree;
        return rights;
    }
    const QTBStoreLifecycle::State& state = lifecycle.Get(object.stateId);
    rights.changeStructure = object.isNewest && state.allowsChange && isFree;
    rights.edit = rights.changeStructure && (isMine || !objectClass.needsCheckOut);
    rights.checkOut = rights.changeStructure && !isCheckedOut;
    rights.promote = object.isNewest && !isCheckedOut && lifecycle.FindNext(object.stateId) != nullptr;
    rights.revise = object.isNewest && isFree && state.allowsRevise;
    return rights;
}

void QTBStoreRights::Refuse(const QTBStoreObject& object, const QTBStoreObject& newest,
                            const QTBStoreLifecycle& lifecycle, const CATUnicodeString& usUser)
{
    const CATUnicodeString usKey(std::string_view{object.key});
    const bool isCheckedOut = !object.checkedOutBy.empty();
    if (isCheckedOut && usUser.View() != object.checkedOutBy) {
        throw QTBStoreFailure("CheckedOutByOtherERR_1103", usKey,
                              CATUnicodeString(std::string_view{object.checkedOutBy}));
    }
    if (!object.isNewest) {
        throw QTBStoreFailure("VersionNotNewestERR_1104", usKey, CATUnicodeString(std::string_view{newest.key}));
    }
    if (isCheckedOut) {
        throw QTBStoreFailure("CheckedOutByUserERR_1105", usKey);
    }
    if (object.stateId == 0) {
        throw QTBStoreFailure("ObjectNotVersionedERR_1106", usKey);
    }
    if (const QTBStoreLifecycle::State& state = lifecycle.Get(object.stateId);
        !state.allowsChange || lifecycle.FindNext(object.stateId) == nullptr) {
        throw QTBStoreFailure("StateForbidsERR_1107", usKey, QTBStoreLifecycle::GetDisplayName(state));
    }
    throw QTBStoreFailure("NotCheckedOutERR_1113", usKey);
}
