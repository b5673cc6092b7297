#include "dialogs/presets/PresetDialog.h"

#include "channels/UniversalChan.h"
#include "controls/QListWidgetPresets.h"
#include "link/ChannelLink.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int kMargin = 12;
constexpr int kSpacing = 8;
constexpr QSize kSize(360, 440);

QLabel *caption(const QString &text, QWidget *buddy)
{
    auto *const label = new QLabel(text, buddy->parentWidget());
    label->setProperty("role", u"caption"_s);
    label->setBuddy(buddy);
    return label;
}

} // namespace

PresetDialog::PresetDialog(const Texts &texts, ChannelLink *link, const QStringList &names, QWidget *parent)
    : QDialog(parent)
    , m_link(link)
    , m_mnemonic(texts.mnemonic)
    , m_list(new QListWidgetPresets(this))
    , m_button(new QPushButton(texts.button, this))
{
    setObjectName(texts.objectName);
    setWindowTitle(texts.title);
    setWindowIcon(QIcon(u":/new/prefix1/ANTENNA.ICO"_s));
    setModal(true);
    m_list->setObjectName(u"listWidgetFileNames"_s);
    m_list->setAccessibleName(u"Presets"_s);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->addItems(names);
    m_button->setObjectName(u"btn"_s + texts.button);
    m_button->setEnabled(false);
}

void PresetDialog::setUp(const QString &nameCaption, QWidget *nameField)
{
    auto *const cancel = new QPushButton(u"Cancel"_s, this);
    cancel->setObjectName(u"btnCancel"_s);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *const buttons = new QHBoxLayout;
    buttons->setSpacing(kSpacing);
    buttons->addStretch();
    // A key for the list or the name must not press a button.
    for (QPushButton *const each : { m_button, cancel }) {
        each->setAutoDefault(false);
        buttons->addWidget(each);
    }

    auto *const rows = new QVBoxLayout(this);
    rows->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    rows->setSpacing(kSpacing);
    rows->addWidget(caption(u"Presets"_s, m_list));
    rows->addWidget(m_list);
    rows->addWidget(caption(nameCaption, nameField));
    rows->addWidget(nameField);
    rows->addLayout(buttons);
    resize(kSize);

    // The list comes last: when it gets the focus it selects its first row, which replaces a typed name.
    QWidget *before = nameField;
    for (QWidget *const each :
         { static_cast<QWidget *>(m_button), static_cast<QWidget *>(cancel), static_cast<QWidget *>(m_list) }) {
        setTabOrder(before, each);
        before = each;
    }
    connectList();
}

void PresetDialog::connectList()
{
    connect(
        m_list, &QListWidget::currentItemChanged, this,
        [this] { listWidgetFileNames_currentItemChanged(m_list->currentItem()); }, Qt::QueuedConnection);
    // Later keys may change the row before a slot runs from the event loop: a key is for the row it was pressed on.
    const auto onPressed = [this](auto signal, auto slot) {
        connect(m_list, signal, this, [this, slot] {
            const auto run = [this, slot, pressed = QPersistentModelIndex(m_list->currentIndex())] {
                if (pressed.isValid())
                    m_list->setCurrentRow(pressed.row());
                slot(this);
            };
            QMetaObject::invokeMethod(this, run, Qt::QueuedConnection);
        });
    };
    onPressed(&QListWidget::itemDoubleClicked,
              [](PresetDialog *d) { d->listWidgetFileNames_itemDoubleClicked(d->m_list->currentItem()); });
    onPressed(&QListWidgetPresets::DeletePressed, [](PresetDialog *d) { d->listWidgetFileNames_DeletePressed(); });
    onPressed(&QListWidgetPresets::EnterPressed, [](PresetDialog *d) { d->listWidgetFileNames_EnterPressed(); });
}

bool PresetDialog::event(QEvent *event)
{
    // A wait box on top has closed; without a window manager nothing else returns the keyboard.
    if (event->type() == QEvent::WindowUnblocked)
        activateWindow();
    return QDialog::event(event);
}

void PresetDialog::listWidgetFileNames_currentItemChanged(QListWidgetItem *item)
{
    setChosenName(item ? item->text() : QString());
    m_button->setEnabled(item != nullptr);
}

void PresetDialog::listWidgetFileNames_itemDoubleClicked(QListWidgetItem *item) { actOn(item); }

void PresetDialog::listWidgetFileNames_EnterPressed() { actOn(m_list->currentItem()); }

void PresetDialog::listWidgetFileNames_DeletePressed()
{
    if (!m_list->currentItem() || !canRequest())
        return;
    request(UniversalChan::Commands::DELPR);
    delete m_list->currentItem();
    // At once, since a second Delete may be queued before the list's own signal.
    listWidgetFileNames_currentItemChanged(m_list->currentItem());
}

void PresetDialog::actOn(const QListWidgetItem *item)
{
    if (!item)
        return;
    setChosenName(item->text());
    act();
}

void PresetDialog::act()
{
    if (!canRequest())
        return;
    request(m_mnemonic);
    m_done = true;
    close();
}

bool PresetDialog::canRequest() const
{
    return !m_done && !chosenName().isEmpty(); // a set without data would be a query
}

void PresetDialog::request(const QString &mnemonic)
{
    m_link->AddCmdToTxmtCmdQueue(
        new StandardCommand(StandardCommand::set(nullptr, UniversalChan::Address, mnemonic, chosenName())));
}
