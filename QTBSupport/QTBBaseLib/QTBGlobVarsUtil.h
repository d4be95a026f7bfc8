#pragma once

#include "CATUnicodeString.h"
#include "QTBBaseLibExport.h"
#include "QTBConstants.h"
#include "QTBIPdmNodeCont.h"
#include "QTBInfoListEntry.h"

class CATError;

// State of the PDM session: its graph, its action index, what the user has set, what the user is to be told. Each
// Get operation fails, quietly, only for a null pointer.
class QTBBASELIB_API QTBGlobVarsUtil
{
public:
    // The session's PDM node container, a component of late type QTBPdmNodeCont that is created when it is first asked
    // for. Fails when no library is loaded that implements the late type.
    static HRESULT GetGlobalPdmNodeContainer(QTBIPdmNodeCont_var* pspIPdmNodeCont);

    // The number of the current action, 0 before the first one. Incremented at the start of every graph update and by
    // every update of the rep trees.
    static HRESULT IncActionIndex();
    static HRESULT GetCurrentActionIndex(int* pActionIndex);
    // Goes on with an action: the trees of several windows follow one graph update, and each update of a tree would
    // end its action for the next.
    static HRESULT SetCurrentActionIndex(int iActionIndex);

    // Where new child links of rep nodes go: in front of the others at first.
    static HRESULT GetAddNewNodeRelationsAt(QTBPlaceToAdd* pPlaceToAdd);
    static HRESULT SetAddNewNodeRelationsAt(QTBPlaceToAdd placeToAdd);

    // Whether the tree shows relation nodes; TRUE at first.
    static HRESULT GetShowRelations(unsigned char* pbShowRelations);
    static HRESULT SetShowRelations(unsigned char bShowRelations);

    // What the PDM and the CAD session are being synchronised for, as one of the synchronise context constants; empty
    // outside a synchronisation.
    static HRESULT GetSynchronizeContext(CATUnicodeString* pusContext);
    static HRESULT SetSynchronizeContext(const CATUnicodeString& usContext);

    // Whether the schema's node behaviours apply to products; FALSE at first.
    static HRESULT GetConfigurableCatiaNodeBehaviorState(unsigned char* pbState);
    static HRESULT SetConfigurableCatiaNodeBehaviorState(unsigned char bState);

    // The folder through which files are exchanged with the PDM system. Unless it is set it is the one that the
    // environment variable QTB_EXMAP_FOLDER names; the empty text, without either, stands for the working folder.
    static HRESULT GetExMapFolder(CATUnicodeString* pusFolder);
    static HRESULT SetExMapFolder(const CATUnicodeString& usFolder);

    // Queues a message for the information list dialog. Takes over the creator's reference of the error, as
    // CATError::GetReturn does. Fails for a null pointer.
    static HRESULT AddMessageToInfoListDialog(CATError* pError);
    // The same for the text of an error.
    static HRESULT AddErrorToInfoListDialog(const CATUnicodeString& usText);

    // The lines queued, oldest first. Of more than MAX_INFO_LIST_ENTRIES the oldest are given up.
    static HRESULT GetInfoListEntries(CATListValQTBInfoListEntry* pEntries);
    static HRESULT ClearInfoList();
    static constexpr int MAX_INFO_LIST_ENTRIES = 10000;

    // Ends the session: closes the PDM documents with their windows, empties the graph and lets go of it, forgets what
    // the load manager and the settings hold. The next use starts a new session. Called when the user logs off.
    static void EndSession();
};
