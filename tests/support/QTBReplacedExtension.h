#pragma once

#include <string>

#include "CATBaseUnknown.h"
#include "CATDictionary.h"
#include "CATInterface_var.h"
#include "CATLateType.h"
#include "CATMetaClass.h"
#include "CATTie.h"

// While it lives, components of a late type that are created answer an interface through another factory, or, without
// one, not themselves any more: then the late type's base is asked. Put back with the object.
class QTBReplacedExtension
{
public:
    QTBReplacedExtension(const char* lateType, CATMetaClass* pInterface, CATInterfaceObjectFactory factory)
        : m_pReplacement(fct_RetrieveMetaObject(
              (std::string("Replacement/") + lateType + "/" + pInterface->GetName()).c_str(),
              static_cast<int>(CATClassKind::DataExtension), CATBaseUnknown::MetaObject(), lateType, "External", 0)),
          m_pInterface(pInterface)
    {
        for (const CATLateType::Registration* pRegistration : CATLateType::Find(lateType)->GetOwnRegistrations()) {
            if (pRegistration->pInterface == pInterface) {
                m_pReplaced = pRegistration->pExtension;
                m_ReplacedFactory = pRegistration->factory;
            }
        }
        if (m_pReplaced != nullptr) {
            CATRemoveFromDictionary(m_pReplaced, m_pInterface);
        }
        if (factory != nullptr) {
            CATFillDictionary(m_pReplacement, m_pInterface, factory, 0, 1);
        }
    }
    QTBReplacedExtension(const QTBReplacedExtension&) = delete;
    QTBReplacedExtension& operator=(const QTBReplacedExtension&) = delete;
    ~QTBReplacedExtension()
    {
        CATRemoveFromDictionary(m_pReplacement, m_pInterface);
        if (m_pReplaced != nullptr) {
            CATFillDictionary(m_pReplaced, m_pInterface, m_ReplacedFactory, 0, 1);
        }
    }

private:
    CATMetaClass* m_pReplacement;
    CATMetaClass* m_pInterface;
    CATMetaClass* m_pReplaced = nullptr;
    CATInterfaceObjectFactory m_ReplacedFactory = nullptr;
};

// The factory of a tie over an extension.
template <template <class...> class Tie, class Interface, class Extension>
constexpr CATInterfaceObjectFactory QTBFactoryOf()
{
    return &CATCreateTie<Tie<CATDataTie<Interface, Extension>>>;
}
