#include "CATPrdDocument.h"

#include <algorithm>
#include <utility>

#include "CATLateType.h"
#include "CATPrdReference.h"
#include "CATPrdSession.h"

namespace {

const CATPrdDocument::Type* FindType(const CATUnicodeString& name)
{
    for (const CATPrdDocument::Type& type : CATPrdDocument::TYPES) {
        if (name == type.name) {
            return &type;
        }
    }
    return nullptr;
}

char ToLower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualsIgnoringCase(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return ToLower(x) == ToLower(y); });
}

} // namespace

bool CATPrdDocument::IsType(const CATUnicodeString& name)
{
    return FindType(name) != nullptr;
}

CATUnicodeString CATPrdDocument::GetTypeNames()
{
    CATUnicodeString names;
    for (std::size_t i = 0; i < TYPE_COUNT; ++i) {
        names += i == 0 ? "" : i + 1 < TYPE_COUNT ? ", " : " or ";
        names += TYPES[i].name;
    }
    return names;
}

CATUnicodeString CATPrdDocument::GetTypeOfFile(const CATUnicodeString& storageName)
{
    const std::string_view fileName = GetFileName(storageName);
    const std::size_t dot = fileName.rfind('.');
    if (dot != std::string_view::npos) {
        for (const Type& type : TYPES) {
            if (EqualsIgnoringCase(fileName.substr(dot + 1), type.extension)) {
                return type.name;
            }
        }
    }
    return {};
}

CATPrdDocument::CATPrdDocument(const Type& type) : CATDocument(CATLateType::Declare(type.name, BASE_TYPE)), m_Type(type)
{
}

CATPrdDocument::~CATPrdDocument()
{
    Close();
}

CATBaseUnknown_var CATPrdDocument::Create(const CATUnicodeString& typeName, const CATUnicodeString& storageName,
                                          const CATUnicodeString& displayName)
{
    auto* pDocument = new CATPrdDocument(*FindType(typeName));
    auto spDocument = CATBaseUnknown_var::Adopt(pDocument);
    pDocument->SetStorageName(storageName);
    pDocument->SetDisplayName(displayName);
    return spDocument;
}

CATPrdDocument* CATPrdDocument::FromComponent(const CATBaseUnknown* pObject)
{
    return pObject != nullptr ? dynamic_cast<CATPrdDocument*>(pObject->GetImpl()) : nullptr;
}

CATPrdReference* CATPrdDocument::GetRoot() const
{
    return static_cast<CATPrdReference*>(m_spRoot.Get());
}

void CATPrdDocument::SetRoot(CATPrdReference& reference)
{
    m_spRoot = CATBaseUnknown_var(&reference);
    reference.SetDocument(this);
    CATPrdSession::Instance().Index(reference);
}

void CATPrdDocument::MakeRoot()
{
    static int s_LastNumber = 0;
    CATUnicodeString partNumber;
    do {
        partNumber.BuildFromNum(++s_LastNumber);
        partNumber = m_Type.newName + partNumber;
    } while (CATPrdSession::Instance().FindRoot(partNumber) != nullptr);
    const auto spReference = CATBaseUnknown_var::Adopt(new CATPrdReference(CATPrdLinkState::Loaded));
    auto& reference = static_cast<CATPrdReference&>(*spReference);
    reference.GetDefinition().partNumber = partNumber;
    SetRoot(reference);
    SetDisplayName(partNumber);
    SetOpened();
}

void CATPrdDocument::HandRootTo(CATPrdDocument& other)
{
    other.m_spRoot = std::exchange(m_spRoot, NULL_var);
    other.GetRoot()->SetDocument(&other);
    other.m_bOpened = std::exchange(m_bOpened, false);
}

void CATPrdDocument::AddEmbedded(CATPrdReference& reference)
{
    m_Embedded.emplace_back(&reference);
    reference.SetDocument(this);
}

void CATPrdDocument::AddShape(CATPrdDocument& shapeDocument)
{
    m_Shapes.emplace_back(&shapeDocument);
    ++shapeDocument.m_ShapeUseCount;
}

bool CATPrdDocument::IsNeeded() const
{
    return m_bOpened || m_ShapeUseCount > 0 || (GetRoot() != nullptr && GetRoot()->IsUsed());
}

bool CATPrdDocument::LeavesSession()
{
    m_bOpened = false;
    if (IsNeeded()) {
        return false;
    }
    Close();
    return true;
}

void CATPrdDocument::Close()
{
    // What they let go of in turn may come back to this document, which has nothing any more then.
    const CATBaseUnknown_var spRoot = std::exchange(m_spRoot, NULL_var);
    const std::vector<CATBaseUnknown_var> embedded = std::exchange(m_Embedded, {});
    const std::vector<CATBaseUnknown_var> shapes = std::exchange(m_Shapes, {});
    if (spRoot != NULL_var) {
        static_cast<CATPrdReference&>(*spRoot).Close();
    }
    for (const CATBaseUnknown_var& spReference : embedded) {
        static_cast<CATPrdReference&>(*spReference).Close();
    }
    for (const CATBaseUnknown_var& spShape : shapes) {
        auto& shape = static_cast<CATPrdDocument&>(*spShape);
        --shape.m_ShapeUseCount;
        CATPrdSession::Instance().CloseIfUnneeded(shape);
    }
}
