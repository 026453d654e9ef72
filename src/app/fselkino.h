#pragma once

#include "base/settingkeys.h"

#include <QDialog>
#include <QHash>
#include <QStringList>

class QCheckBox;
class QPushButton;
class QToolBar;
class QTreeWidget;
class QTreeWidgetItem;

namespace vkm {

class CSelections;
class Prompter;
class Settings;

// The function selection dialog: a tree of the catalogue's functions grouped by category,
// with a category toolbar, a find command and (for the step editor) nodes that take a step
// number for jump, call and step targets. Two instances live for the whole run, one per
// side; they stay loaded between uses and keep their tree.
class fSelKino : public QDialog {
    Q_OBJECT
public:
    // Item data roles of the tree nodes.
    enum Role { TagRole = Qt::UserRole, DigitalRole, KeyRole };
    static const QString kStepNodeText;

    fSelKino(Settings* settings, Prompter& prompter, QWidget* parent = nullptr);

    // Set by the owner before Form_Load.
    int VMKKind = 3;   // 3 step editor, 1 easy customisation editor
    int In_or_Out = 1; // 1 input, 2 output
    const CSelections* sels = nullptr;
    qint16 orgValue = -1;
    // Read by the owner.
    qint16 retValue = -1;
    bool IsLoaded = false;

    // Prepares the dialog for showing (every opening).
    void Form_Load();
    void SelectTopNode();
    void ClearStepTagVariant();
    void DoesKillCUNT(bool kill);
    // Discards the tree (Cancel, or the owner unloading the dialogs).
    void unload();

    // Actions of the buttons and the tree, public so that the owner and tests can drive them.
    void selectOp();
    void cancelOp();
    void findOp();
    // Asks for a step number for the step node; true when one was given (and selected).
    bool stepNumberEntry(QTreeWidgetItem* node);
    void setExpandAll(bool expand);

    QTreeWidget* tree() const { return m_tv; }
    QToolBar* categoryBar() const { return m_tBarCate; }
    QToolBar* findBar() const { return m_tBar; }
    QCheckBox* expandCheck() const { return m_chk; }
    QTreeWidgetItem* categoryNode(const QString& category) const;
    QTreeWidgetItem* findNodeByKey(const QString& key) const;
    const PlacementKeys& placementKeys() const { return In_or_Out == 2 ? keys::fSelOut : keys::fSelIn; }

    // Twips (1/1440 inch) in pixels at the screen's logical resolution.
    int twipsToPixels(int twips) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void reject() override; // the window's close box and Escape work as Cancel

private:
    void BuildTree();
    void BuildCategoryBar();
    bool ensureSettings();
    void placeWindow();
    void SaveFormPosition();
    void showLocal(const QString& text, int style = 2);
    QTreeWidgetItem* addCategoryNode(const QString& category);
    void addStepNode(const QString& category, const QString& key);
    void onItemClicked(QTreeWidgetItem* item);
    void onItemDoubleClicked(QTreeWidgetItem* item);
    void onCategoryButton(const QString& key);
    QList<QTreeWidgetItem*> allNodes() const;

    Settings* m_settings;
    Prompter& m_prompter;
    QTreeWidget* m_tv;
    QToolBar* m_tBar;
    QToolBar* m_tBarCate;
    QCheckBox* m_chk;
    QPushButton* m_btnSelect;
    QPushButton* m_btnCancel;
    QStringList m_categoryKeys; // the category dictionary, in order of first occurrence
    QHash<QString, QTreeWidgetItem*> m_categoryNodes;
};

} // namespace vkm
