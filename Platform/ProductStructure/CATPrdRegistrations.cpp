#include <string>
#include <utility>
#include <vector>

#include "CATDictionary.h"
#include "CATECreateInstanceOnPrdDocument.h"
#include "CATEInitOnPrdDocument.h"
#include "CATEPrdLinkOnASMPRODUCT.h"
#include "CATEPrdPropertiesOnASMPRODUCT.h"
#include "CATEProductOnASMPRODUCT.h"
#include "CATICreateInstance.h"
#include "CATLateType.h"
#include "CATMetaClass.h"
#include "CATPrdDocument.h"
#include "CATTie.h"
#include "TIECATIPrdLink.h"
#include "TIECATIPrdProperties.h"
#include "TIECATIProduct.h"
#include "TIECATInit.h"

namespace {

constexpr const char* PRODUCT = "ASMPRODUCT";

// Registers the extensions of products and their documents when the library is loaded and takes them back when it is
// unloaded.
class Registrations
{
public:
    Registrations()
    {
        Register<TIECATIProduct, CATIProduct, CATEProductOnASMPRODUCT>("CATEProductOnASMPRODUCT", PRODUCT);
        Register<TIECATIPrdProperties, CATIPrdProperties, CATEPrdPropertiesOnASMPRODUCT>(
            "CATEPrdPropertiesOnASMPRODUCT", PRODUCT);
        Register<TIECATIPrdLink, CATIPrdLink, CATEPrdLinkOnASMPRODUCT>("CATEPrdLinkOnASMPRODUCT", PRODUCT);
        Register<TIECATInit, CATInit, CATEInitOnPrdDocument>("CATEInitOnPrdDocument", CATPrdDocument::BASE_TYPE);
        RegisterFactories(std::make_index_sequence<CATPrdDocument::TYPE_COUNT>());
    }
    Registrations(const Registrations&) = delete;
    Registrations& operator=(const Registrations&) = delete;
    ~Registrations()
    {
        for (const Entry& entry : m_Entries) {
            CATRemoveFromDictionary(entry.pExtension, entry.pInterface);
        }
    }

private:
    struct Entry
    {
        CATMetaClass* pExtension;
        CATMetaClass* pInterface;
    };

    template <template <class...> class Tie, class Interface, class Extension>
    void Register(const std::string& extensionName, const char* lateType)
    {
        const Entry entry{fct_RetrieveMetaObject(extensionName.c_str(), static_cast<int>(CATClassKind::CodeExtension),
                                                 CATBaseUnknown::MetaObject(), lateType, "External", 0),
                          Interface::MetaObject()};
        CATFillDictionary(entry.pExtension, entry.pInterface, &CATCreateTie<Tie<CATCodeTie<Interface, Extension>>>, 0,
                          1);
        m_Entries.push_back(entry);
    }

    template <std::size_t... TYPES>
    void RegisterFactories(std::index_sequence<TYPES...>)
    {
        (RegisterFactory<TYPES>(), ...);
    }

    template <std::size_t TYPE>
    void RegisterFactory()
    {
        const char* lateType = CATPrdDocument::TYPES[TYPE].name;
        CATLateType::Declare(lateType, CATPrdDocument::BASE_TYPE);
        Register<TIECATICreateInstance, CATICreateInstance, CATECreateInstanceOnPrdDocument<TYPE>>(
            std::string("CATECreateInstanceOn") + lateType, lateType);
    }

    std::vector<Entry> m_Entries;
};

const Registrations s_Registrations;

} // namespace
