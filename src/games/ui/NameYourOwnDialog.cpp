#include "NameYourOwnDialog.h"

#include "games/NameYourOwn.h"
#include "storage/ConfigFile.h"
#include "storage/Session.h"
#include "ui/DialogParts.h"
#include "ui/SelectOnFocus.h"
#include "ui/TextCodec.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace scorvane {

NameYourOwnDialog::NameYourOwnDialog(Session& session, Prompter& prompter, QWidget* parent)
    : QDialog(parent), session_(session), prompter_(prompter) {
    setObjectName(QStringLiteral("frmNameYourOwn"));
    setWindowTitle(QStringLiteral("Name Your Own"));
    setModal(true);

    const OwnNames names = ownNamesOf(session_.config);
    const int charWidth = fontMetrics().averageCharWidth();
    auto makeBox = [&](const QString& name, const std::string& text, int maxLength, int chars) {
        auto* box = new QLineEdit(fromFileText(text), this);
        box->setObjectName(name);
        box->setMaxLength(maxLength);
        // As wide as the characters it holds, plus the frame.
        box->setFixedWidth(charWidth * chars);
        selectAllOnFocus(box);
        return box;
    };

    auto* typesLabel = new QLabel(QStringLiteral("Game Types"), this);
    QFont bold = typesLabel->font();
    bold.setBold(true);
    typesLabel->setFont(bold);
    auto* types = new QHBoxLayout;
    for (std::size_t i = 0; i < gameTypes_.size(); ++i) {
        gameTypes_[i] =
            makeBox(QStringLiteral("txtGameType%1").arg(i + 1), names.gameTypes[i], 10, 14);
        types->addWidget(gameTypes_[i]);
    }

    auto* heading = new QLabel(
        QStringLiteral(
            "--------------------------- Name Your Own Categories ----------------------------"),
        this);
    heading->setTextFormat(Qt::PlainText);
    heading->setAlignment(Qt::AlignCenter);
    heading->setFont(bold);

    static const char* const kCategories[6] = {"Passing", "Receiving", "Rushing",
                                               "Defense", "Kicking",   "Returns"};
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    for (int row = 0; row < 6; ++row) {
        grid->addWidget(new QLabel(QString::fromLatin1(kCategories[row]), this), row, 0);
        for (int place = 0; place < 5; ++place) {
            const auto k = static_cast<std::size_t>(row * 5 + place);
            columns_[k] = makeBox(QStringLiteral("txtCat%1").arg(k + 1), names.columns[k], 3, 7);
            grid->addWidget(columns_[k], row, place + 1);
        }
    }
    // The rows stand centred under the heading.
    auto* categories = new QHBoxLayout;
    categories->addStretch(1);
    categories->addLayout(grid);
    categories->addStretch(1);

    auto [ok, cancel] = okCancelButtons(this);
    connect(ok, &QPushButton::clicked, this, &NameYourOwnDialog::store);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(typesLabel);
    layout->addLayout(types);
    layout->addSpacing(14);
    layout->addWidget(heading);
    layout->addLayout(categories);
    layout->addSpacing(10);
    layout->addLayout(buttons);
    gameTypes_[0]->setFocus();
}

void NameYourOwnDialog::store() {
    OwnNames names;
    for (std::size_t i = 0; i < gameTypes_.size(); ++i)
        names.gameTypes[i] = toFileText(gameTypes_[i]->text());
    for (std::size_t k = 0; k < columns_.size(); ++k)
        names.columns[k] = toFileText(columns_[k]->text());
    ConfigRecord config = session_.config;
    applyOwnNames(config, names);
    // A disk error was shown by the storage layer; the names stay on screen so the user can try
    // again or cancel.
    if (!saveConfiguration(prompter_, session_.configPath, config))
        return;
    session_.config = config;
    session_.columns.build(session_.config);
    accept();
}

} // namespace scorvane
