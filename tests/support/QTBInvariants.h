#pragma once

#include <string>
#include <vector>

#include "QTBIRepNodeCont.h"

// How far the answers of a session agree about a key. A node that is read again inherits the links of the node whose
// place it takes, so what the PDM system says about a key decides what can hold.
enum class QTBAnswers
{
    // A relation keeps its objects.
    Agree,
    // A relation may get other objects: where it was shown it stays until its object is folded.
    MoveRelations,
    // A key may be that of a relation of another class or of an item of another kind: nodes have links of both.
    Contradict
};

// What has to hold in a session whenever no operation is running, however the last one ended. The answer names each
// broken invariant in a sentence with the keys of the nodes concerned; it is empty when all hold:
//
//     EXPECT_THAT(QTBFindBrokenInvariants(), IsEmpty());
//
// Of the PDM graph:
//   - each node listed has a key and its hash, no two have the same but default roots, and the look-up by key finds
//     just the nodes listed;
//   - each node knows the container, and its action index is none of the future;
//   - every link is known to both its ends, stands once and leads to a node that a container holds;
//   - objects are linked to relations only, and a relation to one object on each side, or to none at all.
// Of the rep trees of every open window and every container that a rep node of the graph belongs to:
//   - keys and look-up as above; each node knows its container and the container's window, which is open;
//   - each node stands for at most one PDM node, which is in the graph and has it among its rep nodes;
//   - each node has at most one parent, of the same container, and hangs below a root: there are no circles;
//   - objects and relations alternate, a relation belongs to the object that it is shown below (see QTBAnswers), and no
//     PDM node is twice below a parent but a relation that superseded another one, whose rep nodes passed to it.
// Of the load manager:
//   - what it finds by part number and by instance is in the graph and fits.
//
// Looks at nodes through their interfaces, with operations that change nothing, and asks the load manager, which brings
// its indexes up to date. Keys and part numbers seen by earlier calls of the same session are asked for again: those of
// nodes that are gone must not be found. No fault may be set (see QTBFault). The time taken is linear in the number of
// nodes and links.
//
// Containers without window and without nodes of the graph are in nobody's reach; they can be given.
std::vector<std::string> QTBFindBrokenInvariants(const std::vector<QTBIRepNodeCont_var>& furtherRepNodeConts = {},
                                                 QTBAnswers answers = QTBAnswers::Agree);
