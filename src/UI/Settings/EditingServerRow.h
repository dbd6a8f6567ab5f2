#pragma once

#include "UI/EditingServer.h"

#include <QWidget>

namespace talmo {

class SymbolLabel;
class TintedLabel;
class WarningRow;

/// Says in a line which server and which model get the text, and in another which programs were refused. Takes no room
/// while there is nothing to say.
class EditingServerRow final : public QWidget {
public:
    EditingServerRow();

    /// `isUsed`: whether the user wants texts to be edited at all.
    void setServer(const EditingServer &server, bool isUsed);

private:
    SymbolLabel *m_symbol;
    TintedLabel *m_text;
    WarningRow *m_refusal;
};

} // namespace talmo
