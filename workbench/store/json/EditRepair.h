#pragma once

#include "workbench/model/EditData.h"

namespace workbench
{

class Warnings;

/**
 * Makes data from a file an edit again: gives new ids where they are missing or taken, puts segments in order, takes
 * out what cannot stay. Each loss is a warning. What is still wrong afterwards, findFault() tells.
 */
void repairEdit(EditData& edit, Warnings& warnings);

} // namespace workbench
