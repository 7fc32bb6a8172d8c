#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <QVector>
#include <QWidget>

class QLineEdit;
class QSortFilterProxyModel;
class QTableView;

namespace ChipLoom {

/// One entry of a cell that is chosen from a list.
struct SettingsChoice
{
    QString text;  ///< shown
    QString value; ///< what the model's `setData` takes
};
using SettingsChoices = QVector<SettingsChoice>;

/// The rows of a settings list, for a `SettingsTable`. A cell is
/// - a text to edit: `ItemIsEditable`, `EditRole`;
/// - a choice: the same, and `ChoicesRole` gives the entries;
/// - a tick: `ItemIsUserCheckable`, `CheckStateRole`;
/// - or fixed.
/// `setData` hands the change to the design; what is refused goes out by `refused`.
class SettingsModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Role {
        ChoicesRole = Qt::UserRole + 1, ///< `SettingsChoices`
        BadRole,                        ///< bool: something is wrong, marked red
        ClosedRole                      ///< bool: drawn as what cannot be changed now
    };

    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : int(m_keys.size()); }
    int columnCount(const QModelIndex &parent = {}) const final { return parent.isValid() ? 0 : columns(); }
    /// The titles of the columns.
    QVariant headerData(int section, Qt::Orientation orientation, int role) const final;
    /// Columns that may stay away where room is short, the last first: what they show can be seen elsewhere or changed
    /// nowhere.
    virtual bool isOptional(int) const { return false; }
    /// What names a row whatever becomes of it.
    QString rowKey(int row) const { return m_keys.value(row); }
    /// -1 if no row has the key.
    int rowOf(const QString &key) const { return int(m_keys.indexOf(key)); }

signals:
    /// A change was not taken; why.
    void refused(const QString &reason);

protected:
    virtual int columns() const = 0;
    virtual QString title(int column) const = 0;
    /// Tells the view that rows have been read anew: in place if they are the same ones, else from the start.
    void setKeys(const QStringList &keys);

private:
    QStringList m_keys;
};

/// A table of settings: rows are selected together and edited with one edit for all, filtered by a text, sorted by a
/// click on a header, copied as text. All of it works from the keyboard. Cells have no widgets of their own; an editor
/// comes with the edit and goes with it.
class SettingsTable : public QWidget
{
    Q_OBJECT
public:
    /// `model` outlives the table.
    explicit SettingsTable(SettingsModel &model, QWidget *parent = nullptr);

    QTableView *view() const { return m_view; }
    QLineEdit *filterField() const { return m_filter; }

    /// Rows of the model that are selected, the current one first.
    QVector<int> selectedRows() const;
    void selectRow(int modelRow);
    /// The cell of the view for one of the model.
    QModelIndex viewIndex(int modelRow, int column) const;
    /// Gives one value to the column of every selected row that can take it, or to the row alone if it is not selected.
    void setForSelection(const QModelIndex &viewIndex, const QVariant &value, int role);

    /// The selected rows with the headers, or all rows if none is selected: cells behind tabs, rows behind line breaks.
    QString copiedText() const;

    /// Columns as wide as what they hold now, but for single cells that are far wider than the others. They keep to the
    /// width of the table as far as they can, until the user draws one himself.
    void fitColumns();

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    void selectionChanged();
    /// A row was clicked, whatever its cell.
    void rowClicked(int modelRow);

private:
    struct ColumnNeed
    {
        int wanted;
        int least; ///< most cells are whole
        int cut;   ///< cut cells can still be told apart
        int whole; ///< for its widest cell
    };

    void addActions();
    void shareWidth();
    void fitTitles();
    void rememberSelection();
    void recallSelection();
    QModelIndex modelIndex(const QModelIndex &viewIndex) const;

    SettingsModel &m_model;
    QSortFilterProxyModel *m_proxy;
    QLineEdit *m_filter;
    QTableView *m_view;
    QStringList m_selectedKeys; ///< over a reset of the rows
    int m_currentColumn = 0;
    QVector<ColumnNeed> m_columnNeeds;
    bool m_hasOwnWidths = false; ///< the user drew a column
    bool m_isSharing = false;
};

} // namespace ChipLoom

Q_DECLARE_METATYPE(ChipLoom::SettingsChoices)
