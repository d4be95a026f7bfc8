#pragma once

#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "CATListValCATBaseUnknown_var.h"
#include "CATNavigLine.h"
#include "PlatformExport.h"

class CATNavigInstance;

// Navigation tree of a window: root objects, and below each object that is unfolded its children. What an object shows
// is asked of it (CATINavigateObject), and how it looks of its navigation node (CATINavigModify, CATIGraphNode), when
// it is displayed for the first time and again after a redraw.
class PLATFORM_API CATNavigBox
{
public:
    CATNavigBox();
    CATNavigBox(const CATNavigBox&) = delete;
    CATNavigBox& operator=(const CATNavigBox&) = delete;
    ~CATNavigBox();

    // The roots in display order: a new list that the caller owns, never null.
    CATListValCATBaseUnknown_var* GetAllRoots() const;

    // Replaces the roots. Empty handles are left out, an object given twice stands once.
    void SetRoots(const CATListValCATBaseUnknown_var& roots);

    // Adds a root behind the others. False for an empty handle and for an object that is a root already.
    bool AddRoot(const CATBaseUnknown_var& spRoot);

    // False when the object is no root.
    bool RemoveRoot(const CATBaseUnknown_var& spRoot);

    // Unfolds and folds an object, wherever it is displayed. Until then it is as its navigation node says, folded for
    // most.
    void Expand(const CATBaseUnknown_var& spObject);
    void Collapse(const CATBaseUnknown_var& spObject);
    bool IsExpanded(const CATBaseUnknown_var& spObject) const;

    // Has the object asked for its label and children again when it is displayed next. Nothing when it is not on
    // display.
    void Redraw(const CATBaseUnknown_var& spObject);

    // The same for everything on display.
    void RedrawAll();

    // The same in every navigation box of the application; called for the redraw events.
    static void RedrawEverywhere(const CATBaseUnknown_var& spObject);

    // Displays the tree: its lines from top to bottom. An object that stands below itself is shown but not unfolded
    // there. Objects that are no longer reached are forgotten.
    std::vector<CATNavigLine> Display();

    // The text shown when the pointer rests on an object: its label, unless its navigation node changes it. Empty for
    // an object that is not on display.
    CATUnicodeString GetShortHelp(const CATBaseUnknown_var& spObject) const;

    // What a double click on an object does: activates it in the user interface (CATIUIActivate). S_FALSE for an object
    // that has nothing to activate, else the result of the activation.
    HRESULT DoubleClick(const CATBaseUnknown_var& spObject) const;

    // The navigation node of an object on display, empty for any other.
    CATBaseUnknown_var GetNode(const CATBaseUnknown_var& spObject) const;

    // How often objects were asked for their label and children since the box exists.
    unsigned long GetQuestionCount() const { return m_QuestionCount; }

private:
    // What the box knows of a displayed object.
    struct Entry
    {
        CATBaseUnknown_var spObject;
        std::unique_ptr<CATNavigInstance> pInstance;
        CATUnicodeString label;
        CATUnicodeString icon;
        int stateCode = 0;
        CATListValCATBaseUnknown_var children;
        bool bKnown = false;
        // Whether the user, or else the navigation node, has said how far the object is unfolded.
        bool bDecided = false;
        bool bExpanded = false;
        bool bReached = false;
        bool bOnPath = false;
    };

    Entry& GetEntry(const CATBaseUnknown_var& spObject);
    void Ask(Entry& entry);
    void AskObject(Entry& entry);
    void AskNode(Entry& entry);
    void ForgetUnreached();

    CATListValCATBaseUnknown_var m_Roots;
    std::unordered_set<const CATBaseUnknown*> m_RootSet;
    std::unordered_map<const CATBaseUnknown*, Entry> m_Entries;
    unsigned long m_QuestionCount = 0;
};
