#include <memory>

#include <gmock/gmock.h>

#include "CATCSO.h"
#include "CATCmdContainer.h"
#include "CATFormat.h"
#include "CATI3DGeoVisu.h"
#include "CATIAlias.h"
#include "CATICSOFilter.h"
#include "CATIContainer.h"
#include "CATIContextualMenu.h"
#include "CATICutAndPastable.h"
#include "CATIDocAlias.h"
#include "CATIEditor.h"
#include "CATIModelEvents.h"
#include "CATINavigModify.h"
#include "CATIPersistent.h"
#include "CATIRootProperties.h"
#include "CATISelectShow.h"
#include "CATIUIActivate.h"
#include "CATIVisProperties.h"
#include "CATInit.h"
#include "CATInstantiateComponent.h"
#include "CATMathPoint.h"
#include "CATMathVector.h"
#include "CATModelEventListener.h"
#include "CATPathElement.h"
#include "CATPathElementPool.h"
#include "CATRep.h"
#include "QTBFaultSession.h"
#include "QTBIBndBox.h"
#include "QTBModelExtensions.h"

namespace {

// What the frame, the view and the object modeler ask of nodes, boxes and documents.
class FrameFaults : public QTBFaultSession
{
protected:
    CATListValCATBaseUnknown_var m_Nodes;
    CATUnicodeString m_usText;

    void Forget() override { m_Nodes.RemoveAll(); }

    // An operation without result, or with one that tells of no failure.
    template <class Interface, class Operation>
    static QTBScenario Asking(const char* subject, const char* name, Operation operation)
    {
        return On<Interface>(subject, name, [operation](Interface& interface) {
            operation(interface);
            return S_OK;
        });
    }
};

TEST_F(FrameFaults, OfRepNodesEndInNeutralAnswers)
{
    // The name is the one that the PDM system gives.
    Run(On<CATIAlias>("window:B", "SetAlias", [](CATIAlias& node) { return node.SetAlias("name"); }).Depends());
    // The frame asks for one object at a time.
    const auto ask = [&](CATICSOFilter& filter, const auto& operation) {
        const std::shared_ptr<CATPathElementPool> pPool = CATPathElementPool::Create();
        const auto spPath = CATPathElement_var::Adopt(pPool->Get(nullptr, CATBaseUnknown_var(&filter)));
        CATCSO cso;
        cso.AddElement(spPath.Get());
        return operation(&cso);
    };
    Run(On<CATICSOFilter>("window:B", "CommandIsAvailable", [&](CATICSOFilter& filter) {
            return ask(filter, [&](CATCSO* pCSO) { return filter.CommandIsAvailable("Copy", pCSO); });
        }).Depends());
    Run(On<CATICSOFilter>("window:B", "AvailableElements", [&](CATICSOFilter& filter) {
            return ask(filter, [&](CATCSO* pCSO) {
                CATListValCATBaseUnknown_var elements;
                CATListValCATBaseUnknown_var* pElements = &elements;
                return filter.AvailableElements("Copy", pCSO, &pElements);
            });
        }).Depends());
    Run(Asking<CATIUIActivate>("window:B", "Deactivate", [](CATIUIActivate& node) { node.Deactivate(); }));
    Run(Asking<CATIUIActivate>("window:B", "IsActive", [](CATIUIActivate& node) { node.IsActive(); }));
    Run(Asking<CATIUIActivate>("window:B", "GetWorkshopName", [](CATIUIActivate& node) { node.GetWorkshopName(); }));
    Run(Asking<CATIUIActivate>("window:B", "GetCommandName", [](CATIUIActivate& node) { node.GetCommandName(); }));
}

TEST_F(FrameFaults, OfTheClipboardEndInNeutralAnswers)
{
    using Node = CATICutAndPastable;
    using Formats = std::unique_ptr<CATListPtrCATFormat>;
    const CATFormat* pFormat = CATFormat::GetRegisteredFormat("QTBRepNode");
    const char* subject = "window:B";
    Run(Asking<Node>(subject, "ListExtractFormats", [](Node& node) { const Formats p(node.ListExtractFormats()); }));
    Run(Asking<Node>(subject, "BoundaryExtract", [&](Node& node) { node.BoundaryExtract(m_Nodes, pFormat); }));
    Run(Asking<Node>(subject, "Extract", [&](Node& node) { node.Extract(pFormat); }));
    Run(Asking<Node>(subject, "ListPasteFormats", [](Node& node) { const Formats p(node.ListPasteFormats()); }));
    Run(Asking<Node>(subject, "Paste", [&](Node& node) { node.Paste(m_Nodes, pFormat); }));
    Run(Asking<Node>(subject, "Create", [&](Node& node) { node.Create(CATBaseUnknown_var(&node), pFormat); }));
    Run(Asking<Node>(subject, "Update", [&](Node& node) { node.Update(CATBaseUnknown_var(&node), pFormat); }));
    Run(Asking<Node>(subject, "ListLinkFormats", [](Node& node) { const Formats p(node.ListLinkFormats()); }));
    Run(Asking<Node>(subject, "Link", [&](Node& node) { node.Link(m_Nodes, pFormat); }));
    Run(Asking<Node>(subject, "ListRemoveFormats", [](Node& node) { const Formats p(node.ListRemoveFormats()); }));
    Run(Asking<Node>(subject, "BoundaryRemove", [&](Node& node) { node.BoundaryRemove(m_Nodes, pFormat); }));
    Run(Asking<Node>(subject, "Remove", [&](Node& node) { node.Remove(pFormat); }));
}

TEST_F(FrameFaults, OfTheTreeEndInNeutralAnswers)
{
    using Node = CATINavigModify;
    Run(Asking<Node>("navigation:A", "UpdateElem", [](Node& node) {
            node.UpdateElem(node.GetAssociatedInstance());
        }).NeverFails());
    Run(On<Node>("navigation:A", "ModifyShortHelp", [&](Node& node) { return node.ModifyShortHelp(m_usText); }));
    Run(Asking<Node>("navigation:A", "GetAssociatedInstance", [](Node& node) { node.GetAssociatedInstance(); }));
    Run(Asking<Node>("navigation:A", "SetAssociatedInstance", [](Node& node) {
        CATNavigInstance* pInstance = node.GetAssociatedInstance();
        node.SetAssociatedInstance(pInstance);
    }));
    Run(Asking<Node>("navigation:A", "GetExpansionMode", [](Node& node) { node.GetExpansionMode(); }));
    Run(Asking<Node>("navigation:A", "SetExpansionMode", [](Node& node) {
        const CATNavigExpansionMode mode = node.GetExpansionMode();
        node.SetExpansionMode(mode);
    }));
    Run(Asking<Node>("navigation:A", "GetFatherContainer", [](Node& node) { node.GetFatherContainer(); }));
}

TEST_F(FrameFaults, OfContainersEndInNeutralAnswers)
{
    Run(Asking<CATIContainer>("window", "ListMembers", [](CATIContainer& cont) {
            cont.ListMembers("QTBIRepNode");
        }).NeverFails());
    Run(Asking<CATIContainer>("window", "FindMember", [](CATIContainer& cont) {
            const auto spMember = CATBaseUnknown_var::Adopt(cont.FindMember("name"));
        }).NeverFails());
}

TEST_F(FrameFaults, OfDocumentsEndInNeutralAnswers)
{
    Run(Asking<CATIEditor>("document", "GetEditor", [](CATIEditor& document) { document.GetEditor(); }).Depends());
    Run(Asking<CATIDocAlias>("alias", "GetAlias", [](CATIDocAlias& alias) { alias.GetAlias(); }));
    using Document = CATIPersistent;
    Run(Asking<Document>("document", "Dirty", [](Document& document) { document.Dirty(); }));
    Run(Asking<Document>("document", "Save", [](Document& document) { document.Save(); }));
    Run(Asking<Document>("document", "SaveAs", [](Document& document) { document.SaveAs("name", FALSE); }));
    Run(Asking<Document>("document", "SaveAs_B", [](Document& document) { document.SaveAs_B(nullptr); }));
    Run(Asking<Document>("document", "Load", [](Document& document) { document.Load("name", TRUE); }));
    Run(Asking<Document>("document", "Load_B", [](Document& document) { document.Load_B(nullptr); }));
    Run(Asking<CATInit>("document", "GetRootContainer", [](CATInit& document) {
            const auto spCont = CATBaseUnknown_var::Adopt(document.GetRootContainer("QTBIRepNodeCont"));
        }).NeverFails());
    Run(Asking<CATInit>("new document", "Init", [](CATInit& document) { document.Init(FALSE); })
            .NeverFails()
            .StopsHalfWay());
}

class Listener : public CATModelEventListener
{
public:
    void OnModelEvent(const CATBaseUnknown_var&, CATModelEvent) override {}
};

TEST_F(FrameFaults, OfBoxesEndInNeutralAnswers)
{
    using Box = QTBIBndBox;
    Run(On<Box>("box", "SetCorner", [](Box& box) { return box.SetCorner(CATMathPoint(1, 2, 3)); }));
    Run(On<Box>("box", "SetFirstEdge", [](Box& box) { return box.SetFirstEdge(CATMathVector(1, 2, 3)); }));
    Run(On<Box>("box", "SetSecondEdge", [](Box& box) { return box.SetSecondEdge(CATMathVector(1, 2, 3)); }));
    Run(On<Box>("box", "SetThirdEdge", [](Box& box) { return box.SetThirdEdge(CATMathVector(1, 2, 3)); }));
    CATMathPoint point;
    CATMathVector vector;
    Run(On<Box>("box", "GetCorner", [&](Box& box) { return box.GetCorner(point); }));
    Run(On<Box>("box", "GetFirstEdge", [&](Box& box) { return box.GetFirstEdge(vector); }));
    Run(On<Box>("box", "GetSecondEdge", [&](Box& box) { return box.GetSecondEdge(vector); }));
    Run(On<Box>("box", "GetThirdEdge", [&](Box& box) { return box.GetThirdEdge(vector); }));
    Run(Asking<Box>("box", "IsMarked", [](Box& box) { box.IsMarked(); }));
    Run(On<Box>("box", "SetMarked", [](Box& box) { return box.SetMarked(TRUE); }));
    Run(Asking<Box>("box", "GetName", [](Box& box) { box.GetName(); }));
    Run(On<Box>("box", "SetName", [](Box& box) { return box.SetName("name"); }));

    Run(Asking<CATIAlias>("box", "GetAlias", [](CATIAlias& box) { box.GetAlias(); }).NeverFails());
    Run(On<CATIAlias>("box", "SetAlias", [](CATIAlias& box) { return box.SetAlias("name"); }));
    Run(Asking<CATIContextualMenu>("box", "GetContextualMenu", [](CATIContextualMenu& box) {
            CATCmdAccess* pMenu = nullptr;
            box.GetContextualMenu(pMenu);
            CATCmdContainer::Dismiss(pMenu);
        }).NeverFails());
    Run(Asking<CATIRootProperties>("box", "GetListOfEditors", [](CATIRootProperties& box) {
            box.GetListOfEditors();
        }).NeverFails());
    Run(Asking<CATI3DGeoVisu>("box", "BuildRep", [](CATI3DGeoVisu& box) {
            const std::unique_ptr<CATRep> pRep(box.BuildRep());
        }).NeverFails());
    Run(Asking<CATI3DGeoVisu>("box", "BuildCoarseRep", [](CATI3DGeoVisu& box) {
            const std::unique_ptr<CATRep> pRep(box.BuildCoarseRep());
        }).NeverFails());
    Run(Asking<CATI3DGeoVisu>("box", "BuildPathRep", [](CATI3DGeoVisu& box) {
            const std::unique_ptr<CATRep> pRep(box.BuildPathRep(nullptr));
        }).NeverFails());
    Run(On<CATISelectShow>("box", "BeginShow", [](CATISelectShow& box) { return box.BeginShow(); }));
    Run(On<CATISelectShow>("box", "EndShow", [](CATISelectShow& box) { return box.EndShow(); }));
    Run(Asking<CATISelectShow>("box", "BuildSelectionRep", [](CATISelectShow& box) {
            const std::unique_ptr<CATRep> pRep(box.BuildSelectionRep());
        }).NeverFails());

    Listener listener;
    using Events = CATIModelEvents;
    Run(Asking<Events>("box", "Connect", [&](Events& box) { box.Connect(&listener); }));
    Run(Asking<Events>("box", "Disconnect", [&](Events& box) {
        box.Connect(&listener);
        box.Disconnect(&listener);
    }));
    Run(Asking<Events>("box", "Dispatch", [&](Events& box) {
        box.Connect(&listener);
        box.Dispatch(CATModelEvent::Modified);
    }));
    using Properties = CATIVisProperties;
    unsigned int color = 0;
    Run(On<Properties>("box", "SetVisible", [](Properties& box) { return box.SetVisible(TRUE); }).Depends());
    Run(Asking<Properties>("box", "IsVisible", [](Properties& box) { box.IsVisible(); }));
    Run(On<Properties>("box", "SetColor", [](Properties& box) { return box.SetColor(3); }).Depends());
    Run(On<Properties>("box", "GetColor", [&](Properties& box) { return box.GetColor(&color); }).Depends());
    Run(On<Properties>("box", "ResetColor", [](Properties& box) { return box.ResetColor(); }).Depends());
    Run(On<Properties>("box", "SetOpacity", [](Properties& box) { return box.SetOpacity(100); }).Depends());
    Run(Asking<Properties>("box", "GetOpacity", [](Properties& box) { box.GetOpacity(); }));
}

TEST_F(FrameFaults, OfFactoriesEndInFailures)
{
    for (const QTBModelLateType& made : QTB_MODEL_LATE_TYPES) {
        const char* lateType = made.name;
        QTBScenario scenario;
        scenario.name = std::string("CreateInstance of ") + lateType;
        scenario.lateType = lateType;
        // The factory's interface object is the object modeler's own.
        scenario.run = [lateType](const CATBaseUnknown_var&) {
            return QTBFaultPoint::Operation("CATICreateInstance::CreateInstance", 0, [lateType] {
                void* pComponent = nullptr;
                const HRESULT hr = ::CATInstantiateComponent(lateType, CLSID_CATBaseUnknown, &pComponent);
                const auto spComponent = CATBaseUnknown_var::Adopt(static_cast<CATBaseUnknown*>(pComponent));
                return hr;
            });
        };
        Run(scenario.Depends());
    }
}

} // namespace
