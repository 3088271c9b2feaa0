#pragma once

#include <QStringView>

// How many umlauts and sharp s stand in `text` where German words have them: small ones behind a letter, capital ones
// before one. Text in a wrong code page has signs and foreign letters there instead.
qsizetype CountGermanLetters(QStringView text);
