#include "CATNavigNode.h"

#include <string>
#include <unordered_map>
#include <vector>

#include "CATDictionary.h"
#include "CATEGraphNodeOnNavigNode.h"
#include "CATLateType.h"
#include "CATMetaClass.h"
#include "CATNodeExtension.h"
#include "CATTie.h"
#include "TIECATIGraphNode.h"
#include "TIECATINavigModify.h"

namespace {

constexpr const char* SUFFIX = "_node";

// The late type of the navigation nodes of such objects, with the chain of its bases.
const CATLateType& DeclareNodeType(const CATLateType& objectType)
{
    std::vector<std::string> names;
    for (const CATLateType* pType = &objectType; pType != nullptr; pType = pType->GetBase()) {
        names.push_back(pType->GetName() + SUFFIX);
    }
    const CATLateType* pNodeType = &CATLateType::Declare(CATNavigNode::ROOT_LATE_TYPE);
    for (std::size_t i = names.size() - 1; i-- > 0;) {
        pNodeType = &CATLateType::Declare(names[i].c_str(), names[i + 1].c_str());
    }
    return *pNodeType;
}

const CATLateType& GetNodeType(const char* objectTypeName)
{
    // Late types exist to the end of the program.
    static std::unordered_map<const CATLateType*, const CATLateType*> s_NodeTypes;
    const CATLateType& objectType = CATLateType::Declare(objectTypeName);
    const CATLateType*& pNodeType = s_NodeTypes[&objectType];
    if (pNodeType == nullptr) {
        pNodeType = &DeclareNodeType(objectType);
    }
    return *pNodeType;
}

// Registers the extensions when the library is loaded and takes them back when it is unloaded.
template <template <class...> class Tie, class Interface, class Extension>
class Registration
{
public:
    explicit Registration(const char* extension)
        : m_pExtension(fct_RetrieveMetaObject(extension, static_cast<int>(CATClassKind::DataExtension),
                                              CATBaseUnknown::MetaObject(), CATNavigNode::ROOT_LATE_TYPE, "External",
                                              0))
    {
        CATFillDictionary(m_pExtension, Interface::MetaObject(), &CATCreateTie<Tie<CATDataTie<Interface, Extension>>>,
                          0, 1);
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() { CATRemoveFromDictionary(m_pExtension, Interface::MetaObject()); }

private:
    CATMetaClass* m_pExtension;
};

const Registration<TIECATIGraphNode, CATIGraphNode, CATEGraphNodeOnNavigNode> s_GraphNode("CATEGraphNodeOnNavigNode");
const Registration<TIECATINavigModify, CATINavigModify, CATNodeExtension> s_NavigModify("CATNodeExtension");

} // namespace

CATBaseUnknown_var CATNavigNode::Create(const CATBaseUnknown_var& spObject)
{
    return CATBaseUnknown_var::Adopt(new CATNavigNode(GetNodeType(spObject->IsA())));
}
