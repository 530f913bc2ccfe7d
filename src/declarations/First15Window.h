#pragma once
// The windows of the first Forms 15G and 15H: the declaration window over their design.
#include "declarations/DeclarationWindow.h"
#include "declarations/First15Slots.h"

class frm15g : public DeclarationWindow
{
    Q_OBJECT
public:
    explicit frm15g(QWidget *parent = nullptr) : DeclarationWindow(First15Slots::design(false), parent) {}
};

class frm15h : public DeclarationWindow
{
    Q_OBJECT
public:
    explicit frm15h(QWidget *parent = nullptr) : DeclarationWindow(First15Slots::design(true), parent) {}
};
