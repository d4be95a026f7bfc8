#include "CATClipboard.h"

#include <gmock/gmock.h>

#include <map>
#include <memory>

#include "CATCSO.h"
#include "CATICSOFilter.h"
#include "CATICutAndPastable.h"
#include "CATPathElementPool.h"
#include "QTBTestLateType.h"
#include "SpecBindNativeFormat.h"
#include "TIECATICSOFilter.h"
#include "TIECATICutAndPastable.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// How the objects of a test behave, by their identity.
struct Behaviour
{
    const char* name = "";
    std::vector<const char*> formats{"TestFormat"};
    CATBaseUnknown_var spCompanion;
    bool giveNothing = false;
    bool listNull = false;
    bool refuseBoundary = false;
    bool refuseRemoval = false;
};
std::map<const CATBaseUnknown*, Behaviour> g_Behaviours;
std::vector<std::string> g_Calls;

class TestCutAndPastable : public CATBaseUnknown
{
public:
    CATListPtrCATFormat* ListExtractFormats() { return ListFormats(); }
    CATListPtrCATFormat* ListPasteFormats() { return ListFormats(); }
    CATListPtrCATFormat* ListLinkFormats() { return ListFormats(); }
    CATListPtrCATFormat* ListRemoveFormats() { return ListFormats(); }
    int BoundaryExtract(CATListValCATBaseUnknown_var& ioObjects, const CATFormat*) { return AddCompanion(ioObjects); }
    int BoundaryRemove(CATListValCATBaseUnknown_var& ioObjects, const CATFormat*) { return AddCompanion(ioObjects); }
    CATBaseUnknown_var Extract(const CATFormat* pFormat)
    {
        Note("extract", pFormat);
        return Mine().giveNothing ? CATBaseUnknown_var() : CATBaseUnknown_var(this);
    }
    CATListValCATBaseUnknown_var Paste(const CATListValCATBaseUnknown_var& objects, const CATFormat* pFormat)
    {
        Note("paste", pFormat);
        return objects;
    }
    CATListValCATBaseUnknown_var Link(const CATListValCATBaseUnknown_var& objects, const CATFormat* pFormat)
    {
        Note("link", pFormat);
        return objects;
    }
    int Create(const CATBaseUnknown_var&, const CATFormat*) { return 0; }
    int Update(const CATBaseUnknown_var&, const CATFormat*) { return 0; }
    int Remove(const CATFormat* pFormat)
    {
        Note("remove", pFormat);
        return Mine().refuseRemoval ? 1 : 0;
    }

private:
    Behaviour& Mine() { return g_Behaviours[GetImpl()]; }
    void Note(const char* call, const CATFormat* pFormat)
    {
        g_Calls.push_back(std::string(call) + " " + Mine().name + " as " + pFormat->GetName().ConvertToChar());
    }
    CATListPtrCATFormat* ListFormats()
    {
        if (Mine().listNull) {
            return nullptr;
        }
        auto* pFormats = new CATListPtrCATFormat();
        for (const char* format : Mine().formats) {
            pFormats->Append(CATFormat::GetRegisteredFormat(format));
        }
        return pFormats;
    }
    int AddCompanion(CATListValCATBaseUnknown_var& objects)
    {
        if (Mine().spCompanion != NULL_var) {
            objects.Append(Mine().spCompanion);
        }
        return Mine().refuseBoundary ? 1 : 0;
    }
};

// Allows everything but cutting, and leaves the last selected object out.
class TestFilter : public CATBaseUnknown
{
public:
    HRESULT CommandIsAvailable(const char* commandName, CATCSO*)
    {
        return std::string_view(commandName) == "Cut" ? S_FALSE : S_OK;
    }
    HRESULT AvailableElements(const char*, CATCSO* pCSO, CATListValCATBaseUnknown_var** ppElements)
    {
        pCSO->InitElementList();
        for (int i = 1; i < pCSO->GetSize(); ++i) {
            (*ppElements)->Append(pCSO->NextElement()->GetObject());
        }
        return S_OK;
    }
};

class Clipboard : public ::testing::Test
{
protected:
    Clipboard()
    {
        m_Type.Register<TIECATICutAndPastable, CATICutAndPastable, TestCutAndPastable>();
        m_FilteringType.Register<TIECATICutAndPastable, CATICutAndPastable, TestCutAndPastable>()
            .Register<TIECATICSOFilter, CATICSOFilter, TestFilter>();
    }
    ~Clipboard() override
    {
        m_Clipboard.Empty();
        m_CSO.Empty();
        g_Behaviours.clear();
        g_Calls.clear();
    }

    CATBaseUnknown_var Make(const char* name) const { return Make(m_Type, name); }
    static CATBaseUnknown_var Make(const QTBTestLateType& type, const char* name)
    {
        CATBaseUnknown_var spObject = type.Create();
        g_Behaviours[spObject.Get()].name = name;
        return spObject;
    }
    void Select(const CATBaseUnknown_var& spObject)
    {
        m_CSO.AddElement(CATPathElement_var::Adopt(m_pPaths->Get(nullptr, spObject)).Get());
    }
    CATBaseUnknown_var SelectNew(const char* name)
    {
        CATBaseUnknown_var spObject = Make(name);
        Select(spObject);
        return spObject;
    }

    QTBTestLateType m_Type{"TestClipboardObject"};
    QTBTestLateType m_FilteringType{"TestFilteringClipboardObject"};
    std::shared_ptr<CATPathElementPool> m_pPaths = CATPathElementPool::Create();
    CATCSO m_CSO;
    CATClipboard& m_Clipboard = *CATClipboard::GetClipboard();
};

TEST_F(Clipboard, HoldsWhatTheSelectedObjectsGive)
{
    const CATBaseUnknown_var spA = SelectNew("A");
    g_Behaviours[SelectNew("B").Get()].giveNothing = true;
    EXPECT_EQ(m_Clipboard.GetFormat(), nullptr);
    EXPECT_EQ(m_Clipboard.Copy(&m_CSO), S_OK);
    EXPECT_THAT(g_Calls, ElementsAre("extract A as TestFormat", "extract B as TestFormat"));
    EXPECT_EQ(m_Clipboard.GetFormat(), CATFormat::GetRegisteredFormat("TestFormat"));
    ASSERT_EQ(m_Clipboard.GetContent().Size(), 1);
    EXPECT_EQ(m_Clipboard.GetContent()[1], spA);
    m_Clipboard.Empty();
    EXPECT_EQ(m_Clipboard.GetFormat(), nullptr);
    EXPECT_EQ(m_Clipboard.GetContent().Size(), 0);
}

TEST_F(Clipboard, TakesTheFirstCommonFormatOrANativeOne)
{
    g_Behaviours[SelectNew("A").Get()].formats = {"TestOther", "TestFormat", "TestClipboardNative"};
    g_Behaviours[SelectNew("B").Get()].formats = {"TestClipboardNative", "TestFormat"};
    m_Clipboard.Copy(&m_CSO);
    EXPECT_EQ(m_Clipboard.GetFormat()->GetName(), "TestFormat");
    EXPECT_FALSE(m_Clipboard.GetFormat()->IsNative());
    SpecBindNativeFormat("TestClipboardNative");
    m_Clipboard.Copy(&m_CSO);
    EXPECT_EQ(m_Clipboard.GetFormat()->GetName(), "TestClipboardNative");
    EXPECT_TRUE(m_Clipboard.GetFormat()->IsNative());
}

TEST_F(Clipboard, StaysAsItIsWhenThereIsNothingToWorkOn)
{
    EXPECT_EQ(m_Clipboard.Copy(nullptr), S_FALSE);
    EXPECT_EQ(m_Clipboard.Copy(&m_CSO), S_FALSE);
    const CATBaseUnknown_var spA = SelectNew("A");
    EXPECT_EQ(m_Clipboard.Copy(&m_CSO), S_OK);
    Behaviour& behaviour = g_Behaviours[SelectNew("B").Get()];
    behaviour.formats = {"TestOther"};
    EXPECT_EQ(m_Clipboard.Copy(&m_CSO), S_FALSE) << "no common format";
    behaviour.listNull = true;
    EXPECT_EQ(m_Clipboard.Copy(&m_CSO), S_FALSE) << "no formats";
    QTBTestLateType plain("TestPlainObject");
    m_CSO.Empty();
    Select(spA);
    Select(plain.Create());
    EXPECT_EQ(m_Clipboard.Copy(&m_CSO), S_FALSE) << "an object that knows no clipboard";
    EXPECT_EQ(m_Clipboard.Delete(&m_CSO), S_FALSE);
    EXPECT_EQ(m_Clipboard.Cut(&m_CSO), S_FALSE);
    m_CSO.Empty();
    Select(spA);
    g_Behaviours[spA.Get()].refuseBoundary = true;
    EXPECT_EQ(m_Clipboard.Copy(&m_CSO), S_FALSE) << "the boundary cannot be told";
    EXPECT_EQ(m_Clipboard.GetContent().Size(), 1);
    EXPECT_THAT(g_Calls, ElementsAre("extract A as TestFormat"));
}

TEST_F(Clipboard, TakesTheObjectsAlongThatBelongToTheSelectedOnes)
{
    g_Behaviours[SelectNew("A").Get()].spCompanion = Make("B");
    EXPECT_EQ(m_Clipboard.Copy(&m_CSO), S_OK);
    EXPECT_EQ(m_Clipboard.Delete(&m_CSO), S_OK);
    EXPECT_THAT(g_Calls, ElementsAre("extract A as TestFormat", "extract B as TestFormat", "remove A as TestFormat",
                                     "remove B as TestFormat"));
}

TEST_F(Clipboard, CutsByCopyingAndRemoving)
{
    SelectNew("A");
    EXPECT_EQ(m_Clipboard.Cut(&m_CSO), S_OK);
    EXPECT_THAT(g_Calls, ElementsAre("extract A as TestFormat", "remove A as TestFormat"));
    EXPECT_EQ(m_Clipboard.GetContent().Size(), 1);
}

TEST_F(Clipboard, TellsWhenAnObjectRefusesToBeRemoved)
{
    g_Behaviours[SelectNew("A").Get()].refuseRemoval = true;
    SelectNew("B");
    EXPECT_EQ(m_Clipboard.Delete(&m_CSO), E_FAIL);
    EXPECT_THAT(g_Calls, ElementsAre("remove A as TestFormat", "remove B as TestFormat"));
    EXPECT_EQ(m_Clipboard.Cut(&m_CSO), E_FAIL);
    EXPECT_EQ(m_Clipboard.GetContent().Size(), 2);
}

TEST_F(Clipboard, IsPastedOntoTheFirstSelectedObjectAsACopyOrALink)
{
    CATListValCATBaseUnknown_var newObjects;
    const CATBaseUnknown_var spA = SelectNew("A");
    EXPECT_EQ(m_Clipboard.Paste(&m_CSO, &newObjects), S_FALSE) << "it holds nothing";
    m_Clipboard.Copy(&m_CSO);
    m_CSO.Empty();
    EXPECT_EQ(m_Clipboard.Paste(&m_CSO, &newObjects), S_FALSE) << "nothing to paste onto";
    g_Calls.clear();
    Behaviour& behaviour = g_Behaviours[SelectNew("B").Get()];
    SelectNew("C");
    EXPECT_EQ(m_Clipboard.Paste(&m_CSO, &newObjects), S_OK);
    ASSERT_EQ(newObjects.Size(), 1);
    EXPECT_EQ(newObjects[1], spA);
    EXPECT_EQ(m_Clipboard.Link(&m_CSO, nullptr), S_OK);
    EXPECT_THAT(g_Calls, ElementsAre("paste B as TestFormat", "link B as TestFormat"));
    behaviour.formats = {"TestOther"};
    EXPECT_EQ(m_Clipboard.Paste(&m_CSO, &newObjects), S_FALSE) << "another format";
}

TEST_F(Clipboard, AsksTheFirstObjectWhetherTheCommandMayRunAndOnWhat)
{
    Select(Make(m_FilteringType, "A"));
    SelectNew("B");
    SelectNew("C");
    EXPECT_EQ(m_Clipboard.Cut(&m_CSO), S_FALSE);
    EXPECT_THAT(g_Calls, IsEmpty());
    EXPECT_EQ(m_Clipboard.Delete(&m_CSO), S_OK);
    EXPECT_THAT(g_Calls, ElementsAre("remove A as TestFormat", "remove B as TestFormat"));
}

TEST_F(Clipboard, LeavesOutObjectsThatHaveLeftTheModel)
{
    const CATBaseUnknown_var spA = SelectNew("A");
    SelectNew("B");
    m_pPaths->LoseObject(spA.Get());
    EXPECT_EQ(m_Clipboard.Copy(&m_CSO), S_OK);
    EXPECT_THAT(g_Calls, ElementsAre("extract B as TestFormat"));
}

TEST(Format, IsTheSameForTheSameName)
{
    EXPECT_EQ(CATFormat::GetRegisteredFormat("TestFormat"), CATFormat::GetRegisteredFormat("TestFormat"));
    EXPECT_NE(CATFormat::GetRegisteredFormat("TestFormat"), CATFormat::GetRegisteredFormat("TestOther"));
    EXPECT_EQ(CATFormat::GetRegisteredFormat(""), nullptr);
}

} // namespace
