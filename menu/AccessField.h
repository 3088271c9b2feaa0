#pragma once

#include <cstdint>

class QFormLayout;
class QSpinBox;
class QWidget;

// The field " Zugang" of the menu's dialogs: an access level of 0 to 20 with buttons.
QSpinBox* AddAccessField(QFormLayout* layout, QWidget* dialog);

// Holds the nearest level to `access`, but shows the number itself until the user leaves the field.
void SetAccessAsGiven(QSpinBox* field, std::int32_t access);
