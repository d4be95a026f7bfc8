#pragma once

#include "CATUnicodeString.h"

class QTBStoreLifecycle;
struct QTBStoreClass;
struct QTBStoreObject;

// What a user may do with an object: this follows from its state, from whether it is the newest version and from who
// has it checked out.
struct QTBStoreRights
{
    // Change its attributes and file. Objects that must be checked out for that have to be by this user.
    bool edit = false;
    bool checkOut = false;
    bool checkIn = false;
    bool promote = false;
    bool revise = false;
    // Change the relations from it to others, and delete it.
    bool changeStructure = false;

    static QTBStoreRights Of(const QTBStoreObject& object, const QTBStoreClass& objectClass,
                             const QTBStoreLifecycle& lifecycle, const CATUnicodeString& usUser);

    // Raises the QTBStoreFailure that says why a right of the object, whose newest version is given, is missing.
    [[noreturn]] static void Refuse(const QTBStoreObject& object, const QTBStoreObject& newest,
                                    const QTBStoreLifecycle& lifecycle, const CATUnicodeString& usUser);
};
