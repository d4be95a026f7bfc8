#include "QTBBndBox.h"

#include "CATIAlias.h"
#include "CATIModelEvents.h"
#include "CATIRootProperties.h"
#include "CATISelectShow.h"
#include "CATIVisProperties.h"
#include "QTBBndBoxTestBox.h"

namespace {

class BndBoxInterfaces : public QTBBndBoxTestBox
{
};

TEST_F(BndBoxInterfaces, HaveAnAliasThatIsReadAndWritten)
{
    const CATIAlias_var spIAlias(m_spBox);
    EXPECT_EQ(spIAlias->GetAlias(), "");
    EXPECT_EQ(spIAlias->SetAlias("Box 1"), S_OK);
    EXPECT_EQ(spIAlias->GetAlias(), "Box 1");
    EXPECT_EQ(m_spIBndBox->GetName(), "") << "the name is another one";
}

TEST_F(BndBoxInterfaces, OfferNoPropertyEditors)
{
    EXPECT_EQ(CATIRootProperties_var(m_spBox)->GetListOfEditors().Size(), 0);
}

TEST_F(BndBoxInterfaces, ShowNothingMoreWhileTheBoxIsSelected)
{
    const CATISelectShow_var spISelectShow(m_spBox);
    EXPECT_EQ(spISelectShow->BeginShow(), S_OK);
    EXPECT_EQ(spISelectShow->BuildSelectionRep(), nullptr);
    EXPECT_EQ(spISelectShow->EndShow(), S_OK);
}

TEST_F(BndBoxInterfaces, TellTheBoxesEventsAndItsVisualProperties)
{
    class Listener : public CATModelEventListener
    {
    public:
        void OnModelEvent(const CATBaseUnknown_var& spObject, CATModelEvent event) override
        {
            m_spObject = spObject;
            m_Event = event;
        }
        CATBaseUnknown_var m_spObject;
        CATModelEvent m_Event = CATModelEvent::Deleted;
    };
    Listener listener;
    const CATIModelEvents_var spIModelEvents(m_spBox);
    const CATIVisProperties_var spIVisProperties(m_spBox);
    spIModelEvents->Connect(&listener);
    EXPECT_EQ(spIVisProperties->SetColor(3), S_OK);
    EXPECT_EQ(listener.m_spObject, m_spBox);
    EXPECT_EQ(listener.m_Event, CATModelEvent::VisPropertiesChanged);
    spIModelEvents->Dispatch(CATModelEvent::Modified);
    EXPECT_EQ(listener.m_Event, CATModelEvent::Modified);
    spIModelEvents->Disconnect(&listener);
    unsigned int color = 0;
    EXPECT_EQ(spIVisProperties->GetColor(&color), S_OK);
    EXPECT_EQ(color, 3U);
    EXPECT_EQ(spIVisProperties->IsVisible(), TRUE);
}

} // namespace
