#pragma once
// New, not yet shown windows of Forms 15C, 15D and 15I, for the Forms operations.
class QDialog;

QDialog *newFrm15c();
QDialog *newFrm15d();
QDialog *newFrm15i();
