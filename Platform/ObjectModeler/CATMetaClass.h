#pragma once

#include <string>

#include "CATIID.h"
#include "PlatformExport.h"

// What a class record describes; the numbers are those of the object modeler's class macros.
enum class CATClassKind : int
{
    Interface = 0,
    Implementation = 1,
    DataExtension = 2,
    CodeExtension = 3
};

// Class record of an interface, an implementation class or an extension class. Records live until the program ends.
class PLATFORM_API CATMetaClass
{
public:
    CATMetaClass(std::string name, CATClassKind kind, CATMetaClass* pBase, std::string lateType, const IID& iid)
        : m_Name(std::move(name)), m_Kind(kind), m_pBase(pBase), m_LateType(std::move(lateType)), m_IID(iid)
    {
    }

    const std::string& GetName() const { return m_Name; }
    CATClassKind GetKind() const { return m_Kind; }
    CATMetaClass* GetBase() const { return m_pBase; }
    // Late type that an extension class extends or an implementation class implements; empty for interfaces.
    const std::string& GetLateType() const { return m_LateType; }
    // Identifier of an interface, or one made from the class name.
    const IID& GetIID() const { return m_IID; }

private:
    std::string m_Name;
    CATClassKind m_Kind;
    CATMetaClass* m_pBase;
    std::string m_LateType;
    IID m_IID;
};

// The class record of that name, made on first use; the same record on later calls. kind is the number of a
// CATClassKind. text is "External"; it and the constant identify the object modeler's class macros and are not looked
// at.
PLATFORM_API CATMetaClass* fct_RetrieveMetaObject(const char* name, int kind, CATMetaClass* pBase, const char* lateType,
                                                  const char* text, int constant);
