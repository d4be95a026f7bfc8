#pragma once

#include <string>
#include <vector>

#include "CATListValCATBaseUnknown_var.h"
#include "QTBIBndBox.h"

// The bounding boxes of the products of an assembly.
namespace ProductBoxes {

// A box in a 3D view.
struct Shown
{
    QTBIBndBox_var spIBndBox;
    std::string name; // instance names from the top down, joined with "/"
    bool isMarked;
};

// Makes a box for each place of a product that has one, as large as the product and turned like it, and adds it to the
// 3D view of the assembly's window. A document whose window shows boxes already is left alone. Raises HostError for
// boxes and placements that are no numbers.
void Show(const CATListValCATBaseUnknown_var& documents);

// The boxes in the 3D views of all windows, in order.
std::vector<Shown> Collect();

// Marks the box, or takes the mark away, by the command of its context menu. Raises HostError when it fails.
void SetMarked(const QTBIBndBox_var& spIBndBox, bool isMarked);

// A line for each box: its number, corner, opposite corner and name.
std::string Describe(const std::vector<Shown>& boxes);

// Draws the boxes of all windows into a PNG file, size pixels wide and high. Raises HostError.
void WritePicture(const std::string& path, int size);

} // namespace ProductBoxes
