#include "MainWindow.h"

#include "AboutDialog.h"
#include "HelpWindow.h"
#include "shell/Help.h"
#include "storage/Platform.h"
#include "ui/TextCodec.h"

#include <QAction>
#include <QCloseEvent>
#include <QFrame>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

namespace scorvane {
namespace {

// A football seen from the side, tilted, with its laces.
void paintFootball(QPainter& p, const QRectF& area) {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.translate(area.center());
    const qreal size = qMin(area.width(), area.height());
    p.rotate(-35);
    const qreal w = size * 0.96;
    const qreal h = size * 0.56;

    QPainterPath ball;
    ball.moveTo(-w / 2, 0);
    ball.cubicTo(-w / 4, -h * 0.68, w / 4, -h * 0.68, w / 2, 0);
    ball.cubicTo(w / 4, h * 0.68, -w / 4, h * 0.68, -w / 2, 0);
    QLinearGradient leather(0, -h / 2, 0, h / 2);
    leather.setColorAt(0, QColor(0xa8, 0x5f, 0x34));
    leather.setColorAt(1, QColor(0x6e, 0x35, 0x1a));
    p.setPen(QPen(QColor(0x4a, 0x22, 0x10), size * 0.025));
    p.setBrush(leather);
    p.drawPath(ball);

    // The white bands near the tips and the laces along the seam.
    p.setPen(QPen(QColor(0xf4, 0xee, 0xe4), size * 0.035, Qt::SolidLine, Qt::FlatCap));
    for (qreal x : {-w * 0.33, w * 0.33})
        p.drawLine(QPointF(x, -h * 0.30), QPointF(x, h * 0.30));
    p.setPen(QPen(QColor(0xf8, 0xf4, 0xec), size * 0.03, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(-w * 0.17, 0), QPointF(w * 0.17, 0));
    for (int i = -2; i <= 2; ++i) {
        const qreal x = i * w * 0.07;
        p.drawLine(QPointF(x, -h * 0.09), QPointF(x, h * 0.09));
    }
    p.restore();
}

class FootballEmblem : public QWidget {
public:
    explicit FootballEmblem(QWidget* parent) : QWidget(parent) { setFixedSize(72, 72); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        paintFootball(p, rect());
    }
};

QString shownDirectory(const std::string& dataDirectory) {
    return dataDirectory.empty() ? QStringLiteral("(none chosen yet)")
                                 : fromUtf8(platform::shownPath(dataDirectory));
}

// What to do next, under the data directory on the start page.
QString startHint(const std::string& dataDirectory, StartupMark startupMark) {
    if (dataDirectory.empty())
        return QStringLiteral("Choose the folder that holds your season with File \u203a Data "
                              "Directory.");
    if (startupMark == StartupMark::NoDataDirectory)
        return QStringLiteral("No team list was found there. Choose the folder that holds your "
                              "season with File \u203a Data Directory.");
    return QStringLiteral("Mark a team below, then enter its games, roster and names from the "
                          "Update menu.");
}

const char* kStartPageStyle = R"(
#startPage {
    background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #f8faf7, stop:1 #e2eae0);
}
#lblTitle { color: #1d3a28; }
#lblTagline { color: #5b6d61; }
#dataCard {
    background: rgba(255, 255, 255, 0.78);
    border: 1px solid #cdd9cc;
    border-radius: 8px;
}
#lblDataCaption { color: #6a7b6f; }
#lblDataDirectory { color: #1d3a28; }
#lblHint { color: #55665a; }
)";

} // namespace

MainWindow::MainWindow(Session& session, Prompter& prompter, QWidget* parent)
    : QMainWindow(parent), session_(session), prompter_(prompter) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowIcon(programIcon());
    buildMenus();
    setCentralWidget(buildStartPage());
    setDataDirectory(session_.paths.dataDirectory);
    updateCommandStates();
    resize(760, 440);
}

MainWindow::~MainWindow() = default;

void MainWindow::buildMenus() {
    for (const Menu& m : menuTree()) {
        QMenu* menu = menuBar()->addMenu(fromUtf8(m.caption));
        menu->setObjectName(fromUtf8(m.name));
        for (const MenuItem& item : m.items) {
            auto* act = new QAction(menu);
            act->setObjectName(fromUtf8(item.name));
            if (item.isSeparator()) {
                act->setSeparator(true);
            } else {
                act->setText(fromUtf8(item.caption));
                commands_.emplace_back(act, &item);
                connect(act, &QAction::triggered, this, [this, &item] { runCommand(item); });
            }
            menu->addAction(act);
            actions_.insert(act->objectName(), act);
        }
    }
}

QWidget* MainWindow::buildStartPage() {
    auto* page = new QFrame(this);
    page->setObjectName(QStringLiteral("startPage"));
    page->setStyleSheet(QString::fromLatin1(kStartPageStyle));

    auto* emblem = new FootballEmblem(page);

    auto* title = new QLabel(QStringLiteral("Scorvane for Football"), page);
    title->setObjectName(QStringLiteral("lblTitle"));
    QFont titleFont = title->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 2.0);
    titleFont.setBold(true);
    title->setFont(titleFont);

    auto* tagline = new QLabel(
        QStringLiteral("Statistics for American football teams  \u00b7  Version 2.1"), page);
    tagline->setObjectName(QStringLiteral("lblTagline"));
    QFont taglineFont = tagline->font();
    taglineFont.setPointSizeF(taglineFont.pointSizeF() * 1.1);
    tagline->setFont(taglineFont);

    auto* heading = new QVBoxLayout;
    heading->setSpacing(2);
    heading->addStretch(1);
    heading->addWidget(title);
    heading->addWidget(tagline);
    heading->addStretch(1);

    auto* top = new QHBoxLayout;
    top->setSpacing(18);
    top->addWidget(emblem);
    top->addLayout(heading, 1);

    auto* card = new QFrame(page);
    card->setObjectName(QStringLiteral("dataCard"));
    auto* caption = new QLabel(QStringLiteral("DATA DIRECTORY"), card);
    caption->setObjectName(QStringLiteral("lblDataCaption"));
    QFont captionFont = caption->font();
    captionFont.setPointSizeF(captionFont.pointSizeF() * 0.85);
    captionFont.setBold(true);
    captionFont.setLetterSpacing(QFont::AbsoluteSpacing, 1.0);
    caption->setFont(captionFont);

    dataDirectoryLabel_ = new QLabel(card);
    dataDirectoryLabel_->setObjectName(QStringLiteral("lblDataDirectory"));
    dataDirectoryLabel_->setTextFormat(Qt::PlainText);
    dataDirectoryLabel_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    dataDirectoryLabel_->setWordWrap(true);
    QFont pathFont = dataDirectoryLabel_->font();
    pathFont.setPointSizeF(pathFont.pointSizeF() * 1.15);
    dataDirectoryLabel_->setFont(pathFont);

    hintLabel_ = new QLabel(card);
    hintLabel_->setObjectName(QStringLiteral("lblHint"));
    hintLabel_->setWordWrap(true);

    auto* cardLayout = new QVBoxLayout(card);
    cardLayout->setContentsMargins(18, 14, 18, 16);
    cardLayout->setSpacing(4);
    cardLayout->addWidget(caption);
    cardLayout->addWidget(dataDirectoryLabel_);
    cardLayout->addSpacing(8);
    cardLayout->addWidget(hintLabel_);

    exitButton_ = new QPushButton(QStringLiteral("Exit Scorvane"), page);
    exitButton_->setObjectName(QStringLiteral("cmdExit"));
    exitButton_->setMinimumWidth(130);
    exitButton_->setMinimumHeight(32);
    // The button never takes the keyboard focus, so no stray Space or Enter ends the program;
    // from the keyboard the program ends with File > Exit Program.
    exitButton_->setFocusPolicy(Qt::NoFocus);
    exitButton_->setAutoDefault(false);
    exitButton_->setDefault(false);
    connect(exitButton_, &QPushButton::clicked, this, [this] {
        if (const MenuItem* item = findMenuItem("mnuExitProgram"))
            runCommand(*item);
    });

    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(exitButton_);

    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(36, 30, 36, 24);
    layout->setSpacing(0);
    layout->addLayout(top);
    layout->addSpacing(26);
    layout->addWidget(card);
    // Where the team selection goes; until it comes, the space stays empty.
    panelSlot_ = new QVBoxLayout;
    panelSlot_->setContentsMargins(0, 0, 0, 0);
    panelSlot_->addStretch(1);
    layout->addLayout(panelSlot_, 1);
    layout->addLayout(bottom);
    return page;
}

QIcon MainWindow::programIcon() {
    QIcon icon;
    for (int size : {16, 32, 48, 64, 128}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter p(&pixmap);
        paintFootball(p, QRectF(0, 0, size, size));
        p.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

void MainWindow::registerScreen(Screen screen, Opener opener) {
    if (opener)
        openers_[screen] = std::move(opener);
    else
        openers_.erase(screen);
    updateCommandStates();
}

void MainWindow::setSelectedTeamCount(int count) {
    selectedTeams_ = count;
    updateCommandStates();
}

void MainWindow::setDataDirectory(const std::string& dataDirectory) {
    setWindowTitle(fromUtf8(mainCaption(dataDirectory)));
    dataDirectoryLabel_->setText(shownDirectory(dataDirectory));
    hintLabel_->setText(startHint(dataDirectory, session_.startupMark));
}

void MainWindow::setTeamPanel(QWidget* panel) {
    while (QLayoutItem* item = panelSlot_->takeAt(0)) {
        if (QWidget* w = item->widget())
            w->deleteLater();
        delete item;
    }
    panelSlot_->addSpacing(14);
    panelSlot_->addWidget(panel, 1);
    panelSlot_->addSpacing(14);
    // The team list is where work starts: it has the focus when the window comes up.
    panel->setFocus();
    resize(width(), qMax(height(), 640));
}

QAction* MainWindow::action(const QString& name) const {
    return actions_.value(name, nullptr);
}

HelpWindow* MainWindow::helpWindow() const {
    return help_.data();
}

bool MainWindow::isAvailable(const MenuItem& item) const {
    switch (item.screen) {
    case Screen::None:
        return false;
    case Screen::HelpTopic:
    case Screen::About:
    case Screen::Exit:
        break;
    default:
        if (!openers_.contains(item.screen))
            return false;
        break;
    }
    return !item.teamDependent || selectedTeams_ > 0;
}

void MainWindow::updateCommandStates() {
    for (const auto& [act, item] : commands_)
        act->setEnabled(isAvailable(*item));
}

void MainWindow::runCommand(const MenuItem& item) {
    if (!isAvailable(item))
        return;
    switch (state_.choose(item)) {
    case Screen::Exit:
        close();
        return;
    case Screen::HelpTopic:
        showHelpTopic(item.helpTopic);
        return;
    case Screen::About:
        showAbout();
        return;
    case Screen::None:
        return;
    default: {
        // Copied: the opener may register or take away screens while it runs.
        const Opener opener = openers_.at(item.screen);
        opener();
        return;
    }
    }
}

void MainWindow::showHelpTopic(int topic) {
    const std::string page = findHelpPage(prompter_, session_.installDirectory, topic);
    if (page.empty())
        return;
    if (!help_)
        help_ = new HelpWindow(this);
    help_->showPage(fromUtf8(page));
}

void MainWindow::showAbout() {
    AboutDialog about(this);
    about.exec();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (help_)
        help_->close();
    QMainWindow::closeEvent(event);
}

} // namespace scorvane
