#include <dlfcn.h>

#include <cstring>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "CATError.h"
#include "CATInstantiateComponent.h"
#include "CATLateType.h"
#include "CATMetaClass.h"
#include "QTBINode.h"
#include "QTBINodeAttributes.h"
#include "QTBMatchers.h"
#include "QTBModelExtensions.h"
#include "QTBTestSession.h"

using testing::IsEmpty;

namespace {

// The library, as an application loads and unloads it. This program is not linked to it.
class ModelLibrary
{
public:
    enum Start
    {
        LOADED,
        NOT_LOADED
    };
    explicit ModelLibrary(Start start = LOADED)
    {
        if (start == LOADED) {
            Load();
        }
    }
    ModelLibrary(const ModelLibrary&) = delete;
    ModelLibrary& operator=(const ModelLibrary&) = delete;
    ~ModelLibrary() { Unload(); }

    void Load()
    {
        m_pHandle = dlopen(QTB_MODEL_LIBRARY, RTLD_NOW | RTLD_LOCAL);
        EXPECT_NE(m_pHandle, nullptr) << dlerror();
    }
    void Unload()
    {
        if (m_pHandle != nullptr) {
            EXPECT_EQ(dlclose(m_pHandle), 0);
            m_pHandle = nullptr;
        }
    }
    void* Find(const std::string& symbol) const { return dlsym(m_pHandle, symbol.c_str()); }

    static bool IsLoaded()
    {
        void* pHandle = dlopen(QTB_MODEL_LIBRARY, RTLD_NOW | RTLD_NOLOAD);
        if (pHandle != nullptr) {
            dlclose(pHandle);
        }
        return pHandle != nullptr;
    }

private:
    void* m_pHandle = nullptr;
};

CATBaseUnknown_var Create(const char* lateType)
{
    void* pv = nullptr;
    EXPECT_EQ(::CATInstantiateComponent(lateType, CLSID_CATBaseUnknown, &pv), S_OK) << lateType;
    return CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pv));
}

void ExpectThatNothingCanBeCreated()
{
    for (const QTBModelLateType& lateType : QTB_MODEL_LATE_TYPES) {
        int something = 0;
        void* pv = &something;
        EXPECT_TRUE(FAILED(::CATInstantiateComponent(lateType.name, CLSID_CATBaseUnknown, &pv))) << lateType.name;
        EXPECT_EQ(pv, nullptr);
    }
}

const CATLateType::Registration* FindRegistration(const QTBModelExtension& row)
{
    const CATLateType* pLateType = CATLateType::Find(row.lateType);
    if (pLateType == nullptr) {
        return nullptr;
    }
    for (const CATLateType::Registration* pRegistration : pLateType->GetOwnRegistrations()) {
        if (pRegistration->pInterface->GetName() == row.interface) {
            return pRegistration;
        }
    }
    return nullptr;
}

class LoadedSession : public QTBTestSession
{
protected:
    void SetUp() override
    {
        m_Library.Load();
        QTBTestSession::SetUp();
    }
    void TearDown() override
    {
        QTBTestSession::TearDown();
        m_Library.Unload();
        EXPECT_FALSE(ModelLibrary::IsLoaded());
    }

    ModelLibrary m_Library{ModelLibrary::NOT_LOADED};
};

} // namespace

TEST(QTBModelLibLoad, LateTypesAppearWhenTheLibraryIsLoaded)
{
    ASSERT_FALSE(ModelLibrary::IsLoaded());
    ExpectThatNothingCanBeCreated();
    const int before = CATBaseUnknown::GetLiveComponentCount();
    const ModelLibrary library;
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before) << "loading creates no component";
    for (const auto& [name, base] : QTB_MODEL_LATE_TYPES) {
        // The base is known before the first component is made.
        ASSERT_NE(CATLateType::Find(name)->GetBase(), nullptr) << name;
        EXPECT_EQ(CATLateType::Find(name)->GetBase()->GetName(), base) << name;
        EXPECT_STREQ(Create(name)->IsA(), name);
    }
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before);
}

TEST(QTBModelLibLoad, EveryRegistrationNamesTheExportedFactoryOfItsInterfaceObject)
{
    const ModelLibrary library;
    for (const QTBModelExtension& row : QTB_MODEL_EXTENSIONS) {
        const std::string name = std::string("CreateTIE") + row.interface + row.extension;
        void* pSymbol = library.Find(name);
        EXPECT_NE(pSymbol, nullptr) << name;
        const CATLateType::Registration* pRegistration = FindRegistration(row);
        ASSERT_NE(pRegistration, nullptr) << name;
        EXPECT_EQ(reinterpret_cast<void*>(pRegistration->factory), pSymbol) << name;
    }
}

TEST(QTBModelLibLoad, NoOtherExtensionIsRegistered)
{
    const ModelLibrary library;
    Dl_info ofLibrary;
    ASSERT_NE(dladdr(library.Find("CreateTIEQTBINodeQTBENodeOnNode"), &ofLibrary), 0);
    std::vector<std::string> registered;
    for (const std::string& lateType : CATLateType::GetNames()) {
        for (const CATLateType::Registration* pRegistration :
             CATLateType::Find(lateType.c_str())->GetOwnRegistrations()) {
            Dl_info ofFactory;
            ASSERT_NE(dladdr(reinterpret_cast<void*>(pRegistration->factory), &ofFactory), 0);
            if (ofFactory.dli_fbase == ofLibrary.dli_fbase) {
                registered.push_back(lateType + " " + pRegistration->pExtension->GetName());
            }
        }
    }
    std::vector<std::string> expected;
    for (const QTBModelExtension& row : QTB_MODEL_EXTENSIONS) {
        expected.push_back(std::string(row.lateType) + " " + row.extension);
    }
    EXPECT_THAT(registered, testing::UnorderedElementsAreArray(expected));
}

TEST(QTBModelLibLoad, OnlyTheLateTypesWithAFactoryCanBeMadeByName)
{
    std::vector<std::string> withFactory;
    for (const QTBModelExtension& row : QTB_MODEL_EXTENSIONS) {
        if (std::strcmp(row.interface, "CATICreateInstance") == 0) {
            withFactory.emplace_back(row.lateType);
        }
    }
    std::vector<std::string> names;
    for (const QTBModelLateType& lateType : QTB_MODEL_LATE_TYPES) {
        names.emplace_back(lateType.name);
    }
    EXPECT_THAT(names, testing::UnorderedElementsAreArray(withFactory));
}

TEST(QTBModelLibLoad, TheValueListsAndRecordsAreExported)
{
    const ModelLibrary library;
    for (const char* name :
         {"CATListValQTBNodeAttribute", "CATListValQTBNodeAttributeList", "CATListValQTBNodeRelation",
          "CATListValQTBNodeRelationList", "CATListValQTBChildRepNodeInfo", "QTBChildRepNodeInfo"}) {
        const std::string constructor = "_ZN" + std::to_string(std::strlen(name)) + name + "C1ERKS_";
        EXPECT_NE(library.Find(constructor), nullptr) << name;
    }
}

TEST(QTBModelLibLoad, ExtensionClassesAreHidden)
{
    const ModelLibrary library;
    EXPECT_EQ(library.Find("_ZN14QTBENodeOnNode11GetPdmClassEP16CATUnicodeString"), nullptr);
    EXPECT_EQ(library.Find("_ZTV14QTBENodeOnNode"), nullptr);
    EXPECT_EQ(library.Find("_ZTV16QTBNodeContainer"), nullptr);
}

TEST(QTBModelLibLoad, RegistrationsVanishWhenTheLibraryIsUnloaded)
{
    {
        const ModelLibrary library;
        Create("QTBPdmObjNode");
    }
    EXPECT_FALSE(ModelLibrary::IsLoaded());
    ExpectThatNothingCanBeCreated();
    std::vector<std::string> left;
    for (const QTBModelExtension& row : QTB_MODEL_EXTENSIONS) {
        if (FindRegistration(row) != nullptr) {
            left.emplace_back(row.extension);
        }
    }
    EXPECT_THAT(left, IsEmpty());
}

TEST(QTBModelLibLoad, ALateTypeThatInheritedAFactoryLosesItWithTheLibrary)
{
    CATLateType::Declare("TestLoadedNode", "QTBNode");
    {
        const ModelLibrary library;
        EXPECT_STREQ(Create("TestLoadedNode")->IsA(), "QTBNode");
    }
    void* pv = nullptr;
    EXPECT_TRUE(FAILED(::CATInstantiateComponent("TestLoadedNode", CLSID_CATBaseUnknown, &pv)));
}

TEST(QTBModelLibLoad, TheLibraryCanBeLoadedAgain)
{
    for (int i = 0; i < 3; ++i) {
        const ModelLibrary library;
        const CATBaseUnknown_var spNode = Create("QTBPdmObjNode");
        QTBINodeAttributes_var spINodeAttributes(spNode);
        ASSERT_TRUE(spINodeAttributes != NULL_var);
        EXPECT_THAT(spINodeAttributes->SetKey("K1"), Succeeds());
        CATUnicodeString usKey;
        EXPECT_THAT(spINodeAttributes->GetKey(&usKey), Succeeds());
        EXPECT_EQ(usKey, "K1");
        for (const QTBModelExtension& row : QTB_MODEL_EXTENSIONS) {
            EXPECT_NE(FindRegistration(row), nullptr) << row.extension;
        }
    }
}

TEST(QTBModelLibLoad, ErrorsOfTheLibraryDoNotOutliveIt)
{
    HRESULT hr = S_OK;
    {
        const ModelLibrary library;
        hr = QTBINode_var(Create("QTBNode"))->GetPdmClass(nullptr);
        EXPECT_THAT(hr, FailsAssertion("pusPdmClass != NULL"));
    }
    EXPECT_EQ(CATError::CATGetLastError(hr, nullptr), nullptr);
    CATError::ForgetResults();
    EXPECT_EQ(CATError::GetLiveCount(), 0);
}

TEST_F(LoadedSession, APdmGraphIsReadByTheLoadedLibrary)
{
    Update(Part("P1", Attribute("PartNumber", "PRT-1")) + Part("P2") + PartPart("R1", "P1", "P2"));
    EXPECT_EQ(AttributeOf(FindNode("P1"), "PartNumber"), "PRT-1");
    EXPECT_THAT(RightKeys("P1", "PartPart"), testing::ElementsAre("R1"));
}

TEST_F(LoadedSession, ASecondSessionStartsAfresh)
{
    EXPECT_TRUE(FindNode("P1") == NULL_var);
    Update(Part("P3"));
    EXPECT_TRUE(FindNode("P3") != NULL_var);
}
