#include "CATIContainer.h"
#include "QTBRepTreeSession.h"

namespace {

using ContainerOnRepNodeCont = QTBRepTreeSession;

TEST_F(ContainerOnRepNodeCont, ShowsNoMembersWhateverItHolds)
{
    Update(Part("A"));
    const QTBIRepNode_var a = CreateRoot("A");
    const CATIContainer_var spIContainer(m_spCont);
    ASSERT_TRUE(spIContainer != NULL_var);
    EXPECT_EQ(spIContainer->ListMembers("QTBIRepNode").Size(), 0);
    EXPECT_EQ(spIContainer->ListMembers(nullptr).Size(), 0);
    EXPECT_EQ(spIContainer->FindMember(KeyOf(a).c_str()), nullptr);
    EXPECT_EQ(spIContainer->FindMember(""), nullptr);
}

} // namespace
