#pragma once

#include "Settings/RecogniserSettings.h"
#include "UI/ChangeWatcher.h"

#include <QWidget>

#include <memory>

class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace talmo {

class SettingsSection;
class TintedLabel;
class WarningRow;

/// A picker for the recogniser, or one each for the text while the user speaks and the one that is inserted, and a row
/// to view, install and remove models and to follow an installation.
class RecogniserSection final : public QWidget {
public:
    explicit RecogniserSection(std::shared_ptr<RecogniserSettings> settings);

private:
    void buildChoice(SettingsSection &section);
    void buildOffer(SettingsSection &section);
    void buildModels(SettingsSection &section);
    void buildInstallation(SettingsSection &section);
    void refresh();
    void refreshChoice();
    void refreshOffer();
    void refreshModel();
    void refreshInstallation();
    void act();
    QString selectedModel() const;

    std::shared_ptr<RecogniserSettings> m_settings;
    QLabel *m_liveTitle = nullptr;
    QComboBox *m_live = nullptr;
    QLabel *m_choiceTitle = nullptr;
    QComboBox *m_choice = nullptr;
    TintedLabel *m_liveCaption = nullptr;
    WarningRow *m_choiceProblem = nullptr;
    /// The model whose installation is under way.
    QString m_installing;
    QPushButton *m_accept = nullptr;
    TintedLabel *m_offer = nullptr;
    QComboBox *m_models = nullptr;
    QPushButton *m_action = nullptr;
    TintedLabel *m_detail = nullptr;
    QLabel *m_licence = nullptr;
    QProgressBar *m_progress = nullptr;
    TintedLabel *m_progressText = nullptr;
    WarningRow *m_modelProblem = nullptr;
    ChangeWatcher m_watcher;
};

} // namespace talmo
