#include "QTBChildRepNodeInfo.h"

#include <climits>
#include <iterator>

#include <gmock/gmock.h>

#include "QTBRepTreeSession.h"

using QTBDiagnosis::Call;
using QTBDiagnosis::DiagnosisOf;
using QTBDiagnosis::Handle;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// Rep nodes of A, B, C and D; the session's action index stands at 10.
class ChildRepNodeInfo : public QTBFaultyRepTreeSession
{
protected:
    using Nodes = CATListValCATBaseUnknown_var;

    void SetUp() override
    {
        QTBFaultyRepTreeSession::SetUp();
        Update(Part("A") + Part("B") + Part("C") + Part("D"));
        AdvanceActionIndexTo(10);
    }

    QTBChildRepNodeInfo InfoOn(const std::vector<const char*>& keys)
    {
        QTBChildRepNodeInfo info(PARTS);
        for (const char* key : keys) {
            EXPECT_THAT(info.AppendChildRepNode(CreateRoot(key)), Succeeds());
        }
        return info;
    }

    static std::vector<std::string> ChildrenOf(const QTBChildRepNodeInfo& info)
    {
        Nodes children;
        children.Append(NULL_var);
        EXPECT_THAT(info.GetChildRepNodes(&children), Succeeds());
        return PdmKeysOf(children);
    }
    static bool AreEqual(const QTBChildRepNodeInfo& left, const QTBChildRepNodeInfo& right)
    {
        EXPECT_EQ((left == right) != 0, (left != right) == 0);
        EXPECT_EQ(left == right, right == left);
        return (left == right) != 0;
    }
};

TEST_F(ChildRepNodeInfo, IsEmptyAtFirst)
{
    QTBChildRepNodeInfo info;
    EXPECT_EQ(info.HasChildRepNodes(), FALSE);
    EXPECT_THAT(ChildrenOf(info), IsEmpty());
    EXPECT_TRUE(AreEqual(info, QTBChildRepNodeInfo(QTBNodeRelationInfo())));
    EXPECT_FALSE(AreEqual(info, QTBChildRepNodeInfo(PARTS)));
    EXPECT_THAT(info.SetNodeRelationInfo(PARTS), Succeeds());
    EXPECT_TRUE(AreEqual(info, QTBChildRepNodeInfo(PARTS)));
}

TEST_F(ChildRepNodeInfo, KeepsItsChildrenInTheOrderOfAppending)
{
    const QTBChildRepNodeInfo info = InfoOn({"C", "A", "B"});
    EXPECT_EQ(info.HasChildRepNodes(), TRUE);
    EXPECT_THAT(ChildrenOf(info), ElementsAre("C", "A", "B"));
}

TEST_F(ChildRepNodeInfo, TakesDuplicatesAndEmptyHandles)
{
    const QTBIRepNode_var spIRepNode = CreateRoot("A");
    QTBChildRepNodeInfo info(PARTS);
    EXPECT_THAT(info.AppendChildRepNode(spIRepNode), Succeeds());
    EXPECT_THAT(info.AppendChildRepNode(spIRepNode), Succeeds());
    EXPECT_THAT(info.AppendChildRepNode(NULL_var), Succeeds());
    EXPECT_THAT(ChildrenOf(info), ElementsAre("A", "A", "?"));
}

TEST_F(ChildRepNodeInfo, CopiesBothMembers)
{
    QTBChildRepNodeInfo original = InfoOn({"A", "B"});
    const QTBChildRepNodeInfo copy(original);
    QTBChildRepNodeInfo assigned;
    assigned = original;
    EXPECT_TRUE(AreEqual(original, copy));
    EXPECT_TRUE(AreEqual(original, assigned));
    EXPECT_THAT(original.AppendChildRepNode(CreateRoot("C")), Succeeds());
    EXPECT_THAT(original.SetNodeRelationInfo(FILES), Succeeds());
    EXPECT_THAT(ChildrenOf(copy), ElementsAre("A", "B"));
    EXPECT_TRUE(AreEqual(copy, assigned));
    EXPECT_FALSE(AreEqual(original, copy));
}

TEST_F(ChildRepNodeInfo, IsEqualWithTheSameRelationAndTheSameChildrenInOrder)
{
    const QTBIRepNode_var spA = CreateRoot("A");
    const QTBIRepNode_var spB = CreateRoot("B");
    const auto make = [](const QTBNodeRelationInfo& relation, const std::vector<QTBIRepNode_var>& children) {
        QTBChildRepNodeInfo info(relation);
        for (const QTBIRepNode_var& spChild : children) {
            EXPECT_THAT(info.AppendChildRepNode(spChild), Succeeds());
        }
        return info;
    };
    EXPECT_TRUE(AreEqual(make(PARTS, {spA, spB}), make(PARTS, {spA, spB})));
    EXPECT_FALSE(AreEqual(make(PARTS, {spA, spB}), make(PARTS, {spB, spA})));
    EXPECT_FALSE(AreEqual(make(PARTS, {spA, spB}), make(PARTS, {spA})));
    EXPECT_FALSE(AreEqual(make(PARTS, {spA}), make(USED_IN, {spA})));
    EXPECT_FALSE(AreEqual(make(PARTS, {spA}), make(FILES, {spA})));
}

TEST_F(ChildRepNodeInfo, IsUnequalExactlyWhenItIsNotEqual)
{
    const QTBChildRepNodeInfo infos[] = {QTBChildRepNodeInfo(), QTBChildRepNodeInfo(PARTS), QTBChildRepNodeInfo(FILES),
                                         InfoOn({"A"}), InfoOn({"A", "B"})};
    for (std::size_t i = 0; i < std::size(infos); ++i) {
        for (std::size_t j = 0; j < std::size(infos); ++j) {
            EXPECT_EQ(infos[i] == infos[j], i == j ? 1 : 0) << i << " and " << j;
            EXPECT_EQ(infos[i] != infos[j], i == j ? 0 : 1) << i << " and " << j;
        }
    }
}

TEST_F(ChildRepNodeInfo, SplitsChildrenByTheLastTwoActions)
{
    const QTBChildRepNodeInfo info = InfoOn({"A", "B", "C", "D"});
    SetActionIndex("A", 10);
    SetActionIndex("B", 8);
    SetActionIndex("C", 9);
    SetActionIndex("D", 12);
    Nodes recent;
    Nodes older;
    recent.Append(NULL_var);
    older.Append(NULL_var);
    EXPECT_THAT(info.GetChildRepNodes(&recent, &older), Succeeds());
    EXPECT_THAT(PdmKeysOf(recent), ElementsAre("A", "C", "D")) << "an index ahead of the session's is recent";
    EXPECT_THAT(PdmKeysOf(older), ElementsAre("B"));
    SetActionIndex("A", 0);
    SetActionIndex("C", -5);
    EXPECT_THAT(info.GetChildRepNodes(&recent, &older), Succeeds());
    EXPECT_THAT(PdmKeysOf(recent), ElementsAre("D"));
    EXPECT_THAT(PdmKeysOf(older), ElementsAre("A", "B", "C"));
}

TEST_F(ChildRepNodeInfo, SplitsChildrenWithTheSmallestAndLargestIndex)
{
    const QTBChildRepNodeInfo info = InfoOn({"A", "B"});
    SetActionIndex("A", INT_MIN);
    SetActionIndex("B", INT_MAX);
    Nodes recent;
    Nodes older;
    EXPECT_THAT(info.GetChildRepNodes(&recent, &older), Succeeds());
    EXPECT_THAT(PdmKeysOf(recent), ElementsAre("B"));
    EXPECT_THAT(PdmKeysOf(older), ElementsAre("A"));
}

TEST_F(ChildRepNodeInfo, WithoutChildrenSplitsIntoTwoEmptyLists)
{
    Nodes recent;
    Nodes older;
    recent.Append(NULL_var);
    older.Append(NULL_var);
    EXPECT_THAT(QTBChildRepNodeInfo(PARTS).GetChildRepNodes(&recent, &older), Succeeds());
    EXPECT_EQ(recent.Size(), 0);
    EXPECT_EQ(older.Size(), 0);
}

TEST_F(ChildRepNodeInfo, ChecksItsArgumentsAndChildren)
{
    const QTBChildRepNodeInfo info = InfoOn({"A", "B"});
    Nodes recent;
    Nodes older;
    EXPECT_THAT(info.GetChildRepNodes(nullptr), FailsAssertion("pChildNodes != NULL"));
    EXPECT_THAT(info.GetChildRepNodes(nullptr, nullptr), FailsAssertion("pMostRecentlyUpdatedChildNodes != NULL"));
    EXPECT_THAT(info.GetChildRepNodes(&recent, nullptr), FailsAssertion("pOlderChildNodes != NULL"));
    const auto diagnosis = [&](const QTBChildRepNodeInfo& on) {
        return DiagnosisOf([&] { return on.GetChildRepNodes(&recent, &older); });
    };
    const QTBFault fault("GetPdmNodeActionIndex");
    EXPECT_THAT(diagnosis(info), ElementsAre(Call("spIRepNodeOnChildNode->GetPdmNodeActionIndex")));
    QTBChildRepNodeInfo withEmptyHandle(PARTS);
    EXPECT_THAT(withEmptyHandle.AppendChildRepNode(NULL_var), Succeeds());
    EXPECT_THAT(diagnosis(withEmptyHandle), ElementsAre(Handle("spIRepNodeOnChildNode")));
}

} // namespace
