#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>

#include "CATBaseUnknown.h"
#include "CATInstantiateComponent.h"
#include "CATInterface_var.h"
#include "CATLateType.h"
#include "CATMetaClass.h"
#include "QTBModelExtensions.h"

namespace {

CATBaseUnknown_var Create(const char* lateType)
{
    void* pv = nullptr;
    EXPECT_EQ(::CATInstantiateComponent(lateType, CLSID_CATBaseUnknown, &pv), S_OK) << lateType;
    return CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pv));
}

bool Answers(const CATBaseUnknown_var& spComponent, const char* interface)
{
    CATBaseUnknown* pInterface = spComponent->QueryInterface(interface);
    if (pInterface != nullptr) {
        pInterface->Release();
    }
    return pInterface != nullptr;
}

class QTBModelRegistrationsTest : public testing::Test
{
protected:
    void SetUp() override { m_ComponentsBefore = CATBaseUnknown::GetLiveComponentCount(); }
    void TearDown() override { EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), m_ComponentsBefore); }

    int m_ComponentsBefore = 0;
};

class QTBRegisteredExtensionTest : public testing::TestWithParam<QTBModelExtension>
{
};

class QTBLateTypeTest : public testing::TestWithParam<QTBModelLateType>
{
};

} // namespace

TEST_P(QTBRegisteredExtensionTest, IsRegisteredOnItsLateTypeForItsInterface)
{
    const QTBModelExtension& row = GetParam();
    const CATLateType* pLateType = CATLateType::Find(row.lateType);
    ASSERT_NE(pLateType, nullptr);
    const auto registrations = pLateType->GetOwnRegistrations();
    const auto found = std::find_if(registrations.begin(), registrations.end(), [&row](const auto* pRegistration) {
        return pRegistration->pInterface->GetName() == row.interface;
    });
    ASSERT_NE(found, registrations.end());
    const CATMetaClass* pExtension = (*found)->pExtension;
    EXPECT_EQ(pExtension->GetName(), row.extension);
    EXPECT_EQ(pExtension->GetLateType(), row.lateType);
    EXPECT_EQ(pExtension->GetBase(), CATBaseUnknown::MetaObject());
    EXPECT_EQ(static_cast<int>(pExtension->GetKind()), row.IsCodeExtension() ? 3 : 2);
    EXPECT_EQ((*found)->iid, IID(row.interface));
    EXPECT_NE((*found)->factory, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Rows, QTBRegisteredExtensionTest, testing::ValuesIn(QTB_MODEL_EXTENSIONS),
                         [](const auto& parameter) { return std::string(parameter.param.extension); });

TEST_F(QTBModelRegistrationsTest, NothingElseIsRegisteredOnTheLibrarysLateTypes)
{
    std::map<std::string, int> expected;
    for (const QTBModelExtension& row : QTB_MODEL_EXTENSIONS) {
        ++expected[row.lateType];
    }
    for (const auto& [lateType, count] : expected) {
        const CATLateType* pLateType = CATLateType::Find(lateType.c_str());
        if (lateType == "ASMPRODUCT" || pLateType == nullptr) {
            continue; // products have extensions of other libraries too
        }
        std::vector<std::string> strangers;
        for (const auto* pRegistration : pLateType->GetOwnRegistrations()) {
            const bool isKnown = std::any_of(
                std::begin(QTB_MODEL_EXTENSIONS), std::end(QTB_MODEL_EXTENSIONS), [&](const QTBModelExtension& row) {
                    return lateType == row.lateType && pRegistration->pExtension->GetName() == row.extension;
                });
            if (!isKnown) {
                strangers.push_back(pRegistration->pExtension->GetName());
            }
        }
        EXPECT_THAT(strangers, testing::IsEmpty()) << lateType;
        EXPECT_LE(pLateType->GetOwnRegistrations().size(), static_cast<std::size_t>(count)) << lateType;
    }
}

TEST_P(QTBLateTypeTest, IsMadeByNameAndKnowsItsBase)
{
    const int before = CATBaseUnknown::GetLiveComponentCount();
    {
        const CATBaseUnknown_var spComponent = Create(GetParam().name);
        EXPECT_STREQ(spComponent->IsA(), GetParam().name);
        EXPECT_STREQ(CATLateType::Find(GetParam().name)->GetBase()->GetName().c_str(), GetParam().base);
        spComponent->AddRef();
        EXPECT_EQ(spComponent->Release(), 1U) << "one reference, owned by the caller";
        EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before + 1);
    }
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before);
}

INSTANTIATE_TEST_SUITE_P(Names, QTBLateTypeTest, testing::ValuesIn(QTB_MODEL_LATE_TYPES),
                         [](const auto& parameter) { return std::string(parameter.param.name); });

TEST_F(QTBModelRegistrationsTest, AnObjectNodeMadeByNameAnswersItsInterfaceAndThoseOfItsBases)
{
    const CATBaseUnknown_var spNode = Create("QTBPdmObjNode");
    EXPECT_TRUE(Answers(spNode, "QTBIPdmObjNode"));
    EXPECT_TRUE(Answers(spNode, "QTBIPdmNode"));
    EXPECT_TRUE(Answers(spNode, "QTBINode"));
    EXPECT_TRUE(Answers(spNode, "QTBINodeAttributes"));
    EXPECT_TRUE(Answers(spNode, "QTBINodeRelations"));
    EXPECT_FALSE(Answers(spNode, "QTBIPdmRelNode"));
    EXPECT_FALSE(Answers(spNode, "QTBIRepNode"));
}

TEST_F(QTBModelRegistrationsTest, ARelationNodeAnswersItsOwnInterfaceAndThoseOfItsBases)
{
    const CATBaseUnknown_var spNode = Create("QTBPdmRelNode");
    EXPECT_TRUE(Answers(spNode, "QTBIPdmRelNode"));
    EXPECT_TRUE(Answers(spNode, "QTBIPdmNode"));
    EXPECT_TRUE(Answers(spNode, "QTBINodeRelations"));
    EXPECT_FALSE(Answers(spNode, "QTBIPdmObjNode"));
}

TEST_F(QTBModelRegistrationsTest, ARepNodeAnswersTheInterfacesOfANodeButNoneOfAPdmNode)
{
    const CATBaseUnknown_var spNode = Create("QTBRepNode");
    EXPECT_TRUE(Answers(spNode, "QTBIRepNode"));
    EXPECT_TRUE(Answers(spNode, "QTBINode"));
    EXPECT_TRUE(Answers(spNode, "QTBINodeAttributes"));
    EXPECT_TRUE(Answers(spNode, "QTBINodeRelations"));
    EXPECT_FALSE(Answers(spNode, "QTBIPdmNode"));
    EXPECT_FALSE(Answers(spNode, "QTBIPdmObjNode"));
}

TEST_F(QTBModelRegistrationsTest, AnInfoNodeAnswersItsInterfaceAndThoseOfANode)
{
    const CATBaseUnknown_var spNode = Create("QTBInfoNode");
    EXPECT_TRUE(Answers(spNode, "QTBIInfoNode"));
    EXPECT_TRUE(Answers(spNode, "QTBINode"));
    EXPECT_TRUE(Answers(spNode, "QTBINodeAttributes"));
    EXPECT_TRUE(Answers(spNode, "QTBINodeRelations"));
    EXPECT_FALSE(Answers(spNode, "QTBIRepNode"));
}

TEST_F(QTBModelRegistrationsTest, AContainerIsNoNode)
{
    const CATBaseUnknown_var spContainer = Create("QTBRepNodeCont");
    EXPECT_TRUE(Answers(spContainer, "CATIContainer"));
    EXPECT_FALSE(Answers(spContainer, "QTBINode"));
    EXPECT_FALSE(Answers(spContainer, "QTBINodeAttributes"));
}

TEST_F(QTBModelRegistrationsTest, TheFacetOfADisplayedNodeHasNoFactory)
{
    void* pv = this;
    EXPECT_TRUE(FAILED(::CATInstantiateComponent("QTBRepNode_node", CLSID_CATBaseUnknown, &pv)));
    EXPECT_EQ(pv, nullptr);
}
