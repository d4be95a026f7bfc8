#pragma once

#include "CATDataType.h"
#include "PlatformExport.h"

class CATBaseUnknown;
class CATComponent;
class CATMetaClass;

// Makes the interface object of one interface for a component (null for an interface that is asked of the late type
// itself, as CATICreateInstance is). Libraries export one per registration, named CreateTIE<interface><extension>.
using CATInterfaceObjectFactory = CATBaseUnknown* (*)(CATComponent*);

// Registers that components of the extension's late type, and of late types derived from it, answer the interface
// through this extension and this factory. The last two arguments are those of the object modeler's class macros.
// S_OK; E_FAIL when the late type has an extension for that interface already or when another interface has the same
// identifier. Called by libraries while they are loaded.
PLATFORM_API HRESULT CATFillDictionary(CATMetaClass* pExtension, CATMetaClass* pInterface,
                                       CATInterfaceObjectFactory factory, int, int);

// Takes the entry back; called when the library that made it is unloaded. Absence is no error.
PLATFORM_API void CATRemoveFromDictionary(CATMetaClass* pExtension, CATMetaClass* pInterface);
