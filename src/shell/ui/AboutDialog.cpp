#include "AboutDialog.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

namespace scorvane {

AboutDialog::AboutDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About"));
    setModal(true);

    auto* name = new QLabel(QStringLiteral("Scorvane for Football"), this);
    name->setObjectName(QStringLiteral("lblProgramName"));
    QFont big = name->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    name->setFont(big);

    auto* version = new QLabel(QStringLiteral("Version 2.1"), this);
    version->setObjectName(QStringLiteral("lblVersion"));

    auto* purpose = new QLabel(
        QStringLiteral("Keeps the statistics of American football teams: games, rosters, "
                       "player statistics, standings and reports."),
        this);
    purpose->setObjectName(QStringLiteral("lblPurpose"));
    purpose->setWordWrap(true);
    purpose->setFixedWidth(360);

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("cmdOK"));
    ok->setDefault(true);
    ok->setAutoDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    // The program's icon (set on the application at start-up) beside the texts, when there is one.
    auto* icon = new QLabel(this);
    icon->setObjectName(QStringLiteral("lblIcon"));
    const QPixmap picture = windowIcon().pixmap(QSize(56, 56));
    icon->setPixmap(picture);
    icon->setAlignment(Qt::AlignTop | Qt::AlignHCenter);
    icon->setVisible(!picture.isNull());

    auto* texts = new QVBoxLayout;
    texts->setSpacing(6);
    texts->addWidget(name);
    texts->addWidget(version);
    texts->addSpacing(10);
    texts->addWidget(purpose);

    auto* top = new QHBoxLayout;
    top->setSpacing(16);
    top->addWidget(icon);
    top->addLayout(texts, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 16);
    layout->setSpacing(0);
    layout->addLayout(top);
    layout->addSpacing(18);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

} // namespace scorvane
