#pragma once

#include <string>

#include "CATBaseUnknown.h"
#include "CATDictionary.h"
#include "CATInterface_var.h"
#include "CATLateType.h"
#include "CATMetaClass.h"
#include "CATTie.h"

// A late type of a test's own, for components that lack an interface or have another extension for one: it answers what
// its base answers, and instead of that what is registered here. Registrations are taken back with the object.
class QTBTestLateType
{
public:
    explicit QTBTestLateType(const char* name, const char* base = nullptr) : m_Name(name)
    {
        CATLateType::Declare(name, base);
    }
    QTBTestLateType(const QTBTestLateType&) = delete;
    QTBTestLateType& operator=(const QTBTestLateType&) = delete;
    ~QTBTestLateType()
    {
        for (const Entry& entry : m_Entries) {
            CATRemoveFromDictionary(entry.pExtension, entry.pInterface);
        }
    }

    // Tie is the interface's template of ties: Register<TIEQTBINode, QTBINode, Extension>().
    template <template <class...> class Tie, class Interface, class Extension>
    QTBTestLateType& Register()
    {
        const std::string recordName = m_Name + "/" + Interface::GetInterfaceName();
        const Entry entry{fct_RetrieveMetaObject(recordName.c_str(), static_cast<int>(CATClassKind::DataExtension),
                                                 CATBaseUnknown::MetaObject(), m_Name.c_str(), "External", 0),
                          Interface::MetaObject()};
        CATFillDictionary(entry.pExtension, entry.pInterface, &CATCreateTie<Tie<CATDataTie<Interface, Extension>>>, 0,
                          1);
        m_Entries.push_back(entry);
        return *this;
    }

    CATBaseUnknown_var Create() const { return CATBaseUnknown_var::Adopt(new Implementation(m_Name.c_str())); }

private:
    struct Entry
    {
        CATMetaClass* pExtension;
        CATMetaClass* pInterface;
    };

    class Implementation : public CATBaseUnknown
    {
    public:
        explicit Implementation(const char* lateType) : CATBaseUnknown(CATLateType::Declare(lateType)) {}
    };

    std::string m_Name;
    std::vector<Entry> m_Entries;
};
