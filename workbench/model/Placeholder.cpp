namespace workbench { }
