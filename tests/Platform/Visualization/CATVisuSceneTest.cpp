#include "CATVisuScene.h"

#include <gmock/gmock.h>

#include <map>

#include "CATExtIModelEvents.h"
#include "CATExtIVisProperties.h"
#include "CATI3DGeoVisu.h"
#include "CATIModelEvents.h"
#include "CATISelectShow.h"
#include "CATIVisProperties.h"
#include "CATPathElement.h"
#include "CATPathElementPool.h"
#include "QTBTestLateType.h"
#include "TIECATI3DGeoVisu.h"
#include "TIECATIModelEvents.h"
#include "TIECATISelectShow.h"
#include "TIECATIVisProperties.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// What the objects of a test look like, by their identity.
struct Look
{
    unsigned int color = 1;
    bool isInvisible = false;
    int builds = 0;
    std::vector<std::string> selections;
};
std::map<const CATBaseUnknown*, Look> g_Looks;

class TestGeoVisu : public CATBaseUnknown
{
public:
    CATRep* BuildRep()
    {
        Look& look = g_Looks[GetImpl()];
        ++look.builds;
        if (look.isInvisible) {
            return nullptr;
        }
        auto* pRep = new CATRep();
        pRep->SetColor(look.color);
        return pRep;
    }
    CATRep* BuildCoarseRep() { return nullptr; }
    CATRep* BuildPathRep(CATPathElement*) { return nullptr; }
};

class TestSelectShow : public CATBaseUnknown
{
public:
    HRESULT BeginShow() { return Note("begin"); }
    HRESULT EndShow() { return Note("end"); }
    CATRep* BuildSelectionRep() { return new CATRep(); }

private:
    HRESULT Note(const char* call)
    {
        g_Looks[GetImpl()].selections.emplace_back(call);
        return S_OK;
    }
};

class VisuScene : public ::testing::Test
{
protected:
    VisuScene()
    {
        m_Type.Register<TIECATI3DGeoVisu, CATI3DGeoVisu, TestGeoVisu>()
            .Register<TIECATIModelEvents, CATIModelEvents, CATExtIModelEvents>()
            .Register<TIECATISelectShow, CATISelectShow, TestSelectShow>()
            .Register<TIECATIVisProperties, CATIVisProperties, CATExtIVisProperties>();
    }
    ~VisuScene() override { g_Looks.clear(); }

    CATBaseUnknown_var Add(unsigned int color)
    {
        const CATBaseUnknown_var spObject = m_Type.Create();
        g_Looks[spObject.Get()].color = color;
        EXPECT_TRUE(m_Scene.Add(spObject));
        return spObject;
    }

    std::vector<unsigned int> Colors()
    {
        std::vector<unsigned int> colors;
        for (const CATVisuItem& item : m_Scene.Display()) {
            colors.push_back(item.color);
        }
        return colors;
    }

    QTBTestLateType m_Type{"TestVisuObject"};
    std::shared_ptr<CATPathElementPool> m_pPaths = CATPathElementPool::Create();
    CATVisuScene m_Scene{m_pPaths};
};

TEST_F(VisuScene, ShowsItsObjectsInTheOrderOfTheirAdding)
{
    const CATBaseUnknown_var spFirst = Add(11);
    const CATBaseUnknown_var spSecond = Add(12);
    EXPECT_FALSE(m_Scene.Add(spFirst));
    EXPECT_FALSE(m_Scene.Add(NULL_var));
    EXPECT_THAT(Colors(), ElementsAre(11, 12));
    EXPECT_TRUE(m_Scene.Remove(spFirst));
    EXPECT_FALSE(m_Scene.Remove(spFirst));
    EXPECT_THAT(Colors(), ElementsAre(12));
    EXPECT_EQ(m_Scene.GetSize(), 1);
}

TEST_F(VisuScene, AsksForARepresentationAgainOnlyAfterTheEventModified)
{
    const CATBaseUnknown_var spObject = Add(11);
    Colors();
    g_Looks[spObject.Get()].color = 12;
    EXPECT_THAT(Colors(), ElementsAre(11));
    CATIModelEvents_var(spObject)->Dispatch(CATModelEvent::Modified);
    EXPECT_THAT(Colors(), ElementsAre(12));
    EXPECT_EQ(g_Looks[spObject.Get()].builds, 2);
    m_Scene.Redraw(spObject);
    Colors();
    EXPECT_EQ(g_Looks[spObject.Get()].builds, 3);
}

TEST_F(VisuScene, LeavesOutWhatIsNotToBeSeen)
{
    const CATBaseUnknown_var spObject = Add(11);
    g_Looks[spObject.Get()].isInvisible = true;
    QTBTestLateType plain("TestPlainObject");
    m_Scene.Add(plain.Create());
    EXPECT_THAT(Colors(), IsEmpty());
    EXPECT_EQ(m_Scene.GetSize(), 2);
}

TEST_F(VisuScene, FollowsTheVisualProperties)
{
    const CATBaseUnknown_var spObject = Add(11);
    const CATIVisProperties_var spIVisProperties(spObject);
    EXPECT_EQ(m_Scene.Display().at(0).opacity, 255U);
    spIVisProperties->SetColor(20);
    spIVisProperties->SetOpacity(100);
    EXPECT_EQ(m_Scene.Display().at(0).color, 20U);
    EXPECT_EQ(m_Scene.Display().at(0).opacity, 100U);
    spIVisProperties->ResetColor();
    EXPECT_THAT(Colors(), ElementsAre(11));
    spIVisProperties->SetVisible(FALSE);
    EXPECT_THAT(Colors(), IsEmpty());
    spIVisProperties->SetVisible(TRUE);
    EXPECT_THAT(Colors(), ElementsAre(11));
    EXPECT_EQ(g_Looks[spObject.Get()].builds, 1);
}

TEST_F(VisuScene, TellsObjectsThatTheyAreSelectedAndShowsWhatTheyShowThen)
{
    const CATBaseUnknown_var spObject = Add(11);
    EXPECT_EQ(m_Scene.Display().at(0).pSelectionRep, nullptr);
    EXPECT_TRUE(m_Scene.Select(spObject, true));
    EXPECT_FALSE(m_Scene.Select(spObject, true));
    EXPECT_NE(m_Scene.Display().at(0).pSelectionRep, nullptr);
    EXPECT_TRUE(m_Scene.Select(spObject, false));
    EXPECT_EQ(m_Scene.Display().at(0).pSelectionRep, nullptr);
    EXPECT_FALSE(m_Scene.Select(m_Type.Create(), true));
    m_Scene.Select(spObject, true);
    m_Scene.Remove(spObject);
    EXPECT_THAT(g_Looks[spObject.Get()].selections, ElementsAre("begin", "end", "begin", "end"));
}

TEST_F(VisuScene, LosesAnObjectThatIsDeletedFromItsPathsToo)
{
    const int before = CATBaseUnknown::GetLiveComponentCount();
    CATBaseUnknown_var spObject = Add(11);
    const auto spPath = CATPathElement_var::Adopt(m_pPaths->Get(nullptr, spObject));
    CATIModelEvents_var(spObject)->Dispatch(CATModelEvent::Deleted);
    EXPECT_EQ(m_Scene.GetSize(), 0);
    EXPECT_TRUE(spPath->GetObject() == NULL_var);
    spObject = NULL_var;
    EXPECT_EQ(CATBaseUnknown::GetLiveComponentCount(), before);
}

TEST_F(VisuScene, StopsListeningWhenItGoes)
{
    const CATBaseUnknown_var spObject = m_Type.Create();
    {
        CATVisuScene scene;
        scene.Add(spObject);
    }
    CATIModelEvents_var(spObject)->Dispatch(CATModelEvent::Modified);
}

class ModelEvents : public VisuScene
{
protected:
    class Listener : public CATModelEventListener
    {
    public:
        Listener(std::vector<std::string>& told, std::string name, CATModelEventListener* pToDisconnect = nullptr)
            : m_Told(told), m_Name(std::move(name)), m_pToDisconnect(pToDisconnect)
        {
        }
        void OnModelEvent(const CATBaseUnknown_var& spObject, CATModelEvent) override
        {
            m_Told.push_back(m_Name);
            CATIModelEvents_var(spObject)->Disconnect(m_pToDisconnect);
        }

    private:
        std::vector<std::string>& m_Told;
        std::string m_Name;
        CATModelEventListener* m_pToDisconnect;
    };

    std::vector<std::string> m_Told;
};

TEST_F(ModelEvents, AreToldToEachListenerOnceInTheOrderOfTheirConnecting)
{
    const CATIModelEvents_var spIModelEvents(m_Type.Create());
    Listener a(m_Told, "a");
    Listener b(m_Told, "b");
    for (CATModelEventListener* pListener : std::vector<CATModelEventListener*>{&b, nullptr, &a, &b}) {
        spIModelEvents->Connect(pListener);
    }
    spIModelEvents->Dispatch(CATModelEvent::Modified);
    EXPECT_THAT(m_Told, ElementsAre("b", "a"));
    spIModelEvents->Disconnect(&b);
    spIModelEvents->Disconnect(&b);
    spIModelEvents->Dispatch(CATModelEvent::Modified);
    EXPECT_THAT(m_Told, ElementsAre("b", "a", "a"));
}

TEST_F(ModelEvents, AreNotToldToAListenerThatIsDisconnectedMeanwhile)
{
    const CATIModelEvents_var spIModelEvents(m_Type.Create());
    Listener second(m_Told, "second");
    Listener first(m_Told, "first", &second);
    spIModelEvents->Connect(&first);
    spIModelEvents->Connect(&second);
    spIModelEvents->Dispatch(CATModelEvent::Modified);
    EXPECT_THAT(m_Told, ElementsAre("first"));
}

TEST_F(ModelEvents, TellOfVisualPropertiesOnlyWhenTheyChange)
{
    const CATBaseUnknown_var spObject = m_Type.Create();
    const CATIVisProperties_var spIVisProperties(spObject);
    Listener listener(m_Told, "told");
    CATIModelEvents_var(spObject)->Connect(&listener);
    EXPECT_EQ(spIVisProperties->SetVisible(TRUE), S_OK);
    EXPECT_EQ(spIVisProperties->ResetColor(), S_OK);
    EXPECT_EQ(spIVisProperties->SetOpacity(255), S_OK);
    EXPECT_EQ(spIVisProperties->SetOpacity(256), E_FAIL);
    EXPECT_THAT(m_Told, IsEmpty());
    EXPECT_EQ(spIVisProperties->SetVisible(FALSE), S_OK);
    EXPECT_EQ(spIVisProperties->SetColor(0), S_OK);
    EXPECT_EQ(spIVisProperties->SetOpacity(0), S_OK);
    EXPECT_THAT(m_Told, ElementsAre("told", "told", "told"));
    CATIModelEvents_var(spObject)->Disconnect(&listener);
}

TEST(VisProperties, HaveNoColourUntilOneIsSet)
{
    CATExtIVisProperties properties;
    unsigned int color = 99;
    EXPECT_EQ(properties.GetColor(&color), E_FAIL);
    EXPECT_EQ(color, 99U);
    EXPECT_EQ(properties.SetColor(5), S_OK);
    EXPECT_EQ(properties.GetColor(nullptr), E_FAIL);
    EXPECT_EQ(properties.GetColor(&color), S_OK);
    EXPECT_EQ(color, 5U);
    EXPECT_EQ(properties.GetOpacity(), 255U);
    EXPECT_EQ(properties.IsVisible(), TRUE);
}

} // namespace
