#pragma once

#include "UI/EditingServer.h"

#include <QWidget>

namespace talmo {

class SymbolLabel;
class TintedLabel;
class WarningRow;

/// Shows the server and model that receive the text, whether that model is too slow for this machine, and the servers
/// that were refused. Hidden if there is nothing to show.
class EditingServerRow final : public QWidget {
public:
    EditingServerRow();

    /// `isUsed`: whether the user has enabled editing by a language model.
    void setServer(const EditingServer &server, bool isUsed);

private:
    SymbolLabel *m_symbol;
    TintedLabel *m_text;
    WarningRow *m_slowness;
    WarningRow *m_refusal;
};

} // namespace talmo
