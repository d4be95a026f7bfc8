#include "CATStepProducts.h"

#include <array>
#include <cmath>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "CATError.h"
#include "CATProductServices.h"

namespace {

constexpr const char* PRODUCT = "CATProduct";
constexpr const char* PART = "CATPart";

// What a file name cannot hold is left out of it.
CATUnicodeString ToFileName(const CATUnicodeString& id)
{
    std::string name(id.View());
    for (char& c : name) {
        c = c == '/' || c == '\\' || static_cast<unsigned char>(c) < ' ' ? '_' : c;
    }
    return CATUnicodeString(std::string_view(name));
}

// Gives each document of one assembly a file of its own: products may have the same id.
class FileNames
{
public:
    explicit FileNames(const CATUnicodeString& directory) : m_Directory(directory) {}

    CATUnicodeString Make(const CATUnicodeString& id, const char* type)
    {
        const CATUnicodeString base = m_Directory + "/" + ToFileName(id);
        CATUnicodeString path = base + "." + type;
        int& number = m_Numbers[path];
        while (!m_Used.insert(path).second) {
            CATUnicodeString suffix;
            suffix.BuildFromNum(++number + 1);
            path = base + "~" + suffix + "." + type;
        }
        return path;
    }

private:
    CATUnicodeString m_Directory;
    std::unordered_set<CATUnicodeString> m_Used;
    std::unordered_map<CATUnicodeString, int> m_Numbers;
};

// Numbers with blanks between, to a millionth of a millimetre and without a sign in front of zero.
template <std::size_t SIZE>
CATUnicodeString ToText(const std::array<double, SIZE>& numbers)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(12);
    for (std::size_t i = 0; i < SIZE; ++i) {
        text << (i == 0 ? "" : " ") << std::round(numbers[i] * 1e6) / 1e6 + 0.0;
    }
    return CATUnicodeString(std::string_view(text.str()));
}

std::size_t FindNameStart(std::string_view path)
{
    return path.find_last_of('/') + 1;
}

// With the slash at its end; where the STEP files lie.
CATUnicodeString GetParentDirectory(const CATUnicodeString& directory)
{
    return CATUnicodeString(directory.View().substr(0, FindNameStart(directory.View())));
}

// The directory of an assembly's documents: the path of its file without extension.
CATUnicodeString ToDirectory(const CATUnicodeString& path)
{
    const std::string_view view = path.View();
    const std::size_t name = FindNameStart(view);
    const std::size_t dot = view.rfind('.');
    return CATUnicodeString(dot == std::string_view::npos || dot <= name ? view : view.substr(0, dot));
}

} // namespace

CATPrdStructure CATStepProducts::ToStructure(const CATStepAssembly& assembly, const CATUnicodeString& directory)
{
    std::vector<bool> isParent(assembly.products.size(), false);
    for (const CATStepUsage& usage : assembly.usages) {
        isParent[usage.parent] = true;
    }
    CATPrdStructure structure;
    FileNames fileNames(directory);
    for (std::size_t i = 0; i < assembly.products.size(); ++i) {
        const CATStepProduct& product = assembly.products[i];
        CATPrdReferenceData data;
        if (product.isBrokenLink && !isParent[i]) {
            data.linkState = CATPrdLinkState::Broken;
            data.storageName = GetParentDirectory(directory) + product.file;
        } else {
            const char* type = isParent[i] ? PRODUCT : PART;
            data.documentType = type;
            data.storageName = fileNames.Make(product.id, type);
            data.definition.partNumber = product.id;
            data.definition.nomenclature = product.name;
            data.definition.descriptionRef = product.description;
            data.definition.revision = product.version;
            data.definition.userProperties.emplace(SOURCE_FILE, product.file);
            if (product.box && !isParent[i]) {
                data.definition.userProperties.emplace(CAT_PRD_BOUNDING_BOX, ToText(*product.box));
            }
        }
        structure.references.push_back(std::move(data));
    }
    for (const CATStepUsage& usage : assembly.usages) {
        CATPrdUsageData data{usage.parent, usage.child, usage.instanceName, {}, {}};
        if (usage.origin != CATStepNameOrigin::File) {
            data.userProperties.emplace(NAME_ORIGIN,
                                        usage.origin == CATStepNameOrigin::Designator ? "designator" : "derived");
        }
        if (usage.placement) {
            data.userProperties.emplace(CAT_PRD_PLACEMENT, ToText(*usage.placement));
        }
        structure.usages.push_back(std::move(data));
    }
    return structure;
}

HRESULT CATStepProducts::OpenFile(const CATUnicodeString& usPath, CATListValCATBaseUnknown_var* pDocuments,
                                  CATStepContent content)
{
    try {
        const CATStepAssembly assembly = CATReadStepAssembly(usPath.ConvertToChar(), content);
        return CATProductServices::Open(ToStructure(assembly, ToDirectory(usPath)), pDocuments);
    } catch (const std::runtime_error& error) {
        auto* pError = CATError::Make<CATInternalError>({error.what()}, "StepFileERR_1003", "CATProductStructure");
        return CATError::GetReturn(2, pError, nullptr, __FILE__, __LINE__);
    }
}
