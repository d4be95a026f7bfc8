#include "QTBDesignTableUtil.h"

#include <gmock/gmock.h>

#include "QTBProductSession.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class DesignTableUtil : public QTBProductSession
{
protected:
    static std::vector<std::string> NamesOf(const CATListValQTBDesignTable& tables)
    {
        std::vector<std::string> names;
        for (const QTBDesignTable& table : tables) {
            names.push_back(ToText(table.GetName()) + " " + ToText(table.GetFilePath()));
        }
        return names;
    }

    void Read(const CATIProduct_var& spProduct)
    {
        EXPECT_THAT(
            QTBDesignTableUtil::GetDesignTableInformation(spProduct, &m_InPdm, &m_NotInPdm, &m_InDocument, &m_PdmNodes),
            Succeeds());
    }

    CATListValQTBDesignTable m_InPdm;
    CATListValQTBDesignTable m_NotInPdm;
    CATListValQTBDesignTable m_InDocument;
    CATListValCATBaseUnknown_var m_PdmNodes;
};

TEST_F(DesignTableUtil, EachTableStandsInOneList)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P"><instance of="c" name="C.1"/></product>
            <product id="c" file="c.CATPart" partNumber="C">
              <designTable name="one" file="one.xls"/><designTable name="two"/><designTable name="three" file="3.txt"/>
              <designTable name="four" file="four.xls"/>
            </product>)");
    Update(File("DesignTableFile", "1", "one.xls") + File("DesignTableFile", "4", "four.xls") +
           File("CATPartFile", "3", "3.txt"));
    Read(At("P", {"C.1"}));
    EXPECT_THAT(NamesOf(m_InPdm), ElementsAre("one /data/one.xls", "four /data/four.xls"));
    EXPECT_THAT(NamesOf(m_NotInPdm), ElementsAre("three /data/3.txt"));
    EXPECT_THAT(NamesOf(m_InDocument), ElementsAre("two "));
    EXPECT_THAT(KeysOf(m_PdmNodes), ElementsAre("1", "4"));
    Read(Root("P"));
    EXPECT_THAT(NamesOf(m_InPdm), IsEmpty());
    EXPECT_THAT(NamesOf(m_NotInPdm), IsEmpty());
    EXPECT_THAT(NamesOf(m_InDocument), IsEmpty());
    EXPECT_EQ(m_PdmNodes.Size(), 0);
    EXPECT_THAT(QTBDesignTableUtil::GetDesignTableInformation(Root("C"), nullptr, nullptr, nullptr, nullptr),
                Succeeds());
}

TEST_F(DesignTableUtil, NothingIsKnownOfAProductThatIsNotLoaded)
{
    Open(R"(<product id="p" file="p.CATProduct" partNumber="P">
              <instance of="v" name="V.1"/><instance of="l" name="L.1"/>
            </product>
            <product id="v" file="v.CATPart" shape="v.cgr" link="visualization"><designTable name="one"/></product>
            <product id="l" file="l.CATPart" link="broken"/>)");
    Read(At("P", {"V.1"}));
    EXPECT_THAT(NamesOf(m_InDocument), IsEmpty());
    Read(At("P", {"L.1"}));
    EXPECT_THAT(NamesOf(m_InDocument), IsEmpty());
}

TEST_F(DesignTableUtil, OnlyAProductHasDesignTables)
{
    Update(NumberedPart("1", "P"));
    m_PdmNodes.Append(FindNode("1"));
    EXPECT_THAT(QTBDesignTableUtil::GetDesignTableInformation(CATIProduct_var(), nullptr, nullptr, nullptr, nullptr),
                FailsQuietly());
    EXPECT_THAT(QTBDesignTableUtil::GetDesignTableInformation(FindNode("1"), nullptr, nullptr, nullptr, &m_PdmNodes),
                FailsQuietly());
    EXPECT_EQ(m_PdmNodes.Size(), 0);
}

} // namespace
