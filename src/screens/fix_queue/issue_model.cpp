#include "screens/fix_queue/issue_model.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

using FixQueueFigures::Issue;
using FixQueueFigures::Kind;

namespace {

/// What is the same about an issue from one queue to the next.
QString keyOf(const Issue &issue, const Derived &derived)
{
    switch (issue.kind) {
    case Kind::Missing:
        return u'm' + derived.result().tracks[issue.index].track.relativePath;
    case Kind::Duplicate:
        return u'd' + derived.duplicateGroups[issue.index].key;
    case Kind::Tag:
        return u't' + derived.result().tracks[issue.index].track.relativePath;
    }
    Q_UNREACHABLE();
}

QString pathOf(const Issue &issue, const Derived &derived)
{
    if (issue.kind != Kind::Duplicate)
        return derived.result().tracks[issue.index].track.absolutePath();
    const auto &members = derived.duplicateGroups[issue.index].members;
    return members.empty() ? QString() : members.front().track.absolutePath();
}

} // namespace

IssueModel::IssueModel(const AppState &app, QObject *parent)
    : KeyedListModel(parent)
    , m_app(app)
{}

QVariant IssueModel::data(const QModelIndex &index, int role) const
{
    const int place = placeOf(index);
    const auto derived = m_app.derived();
    if (place < 0 || !derived)
        return {};
    const Issue &issue = m_issues[size_t(place)];
    switch (role) {
    case KeyRole:
        return keys().at(place);
    case TypeRole:
        return FixQueueFigures::typeLabel(issue.kind);
    case TrackRole:
        return FixQueueFigures::textsOf(issue, *derived).track;
    case LineRole: {
        const FixQueueFigures::Texts texts = FixQueueFigures::textsOf(issue, *derived);
        return QString(texts.problem + u" → "_s + texts.plan);
    }
    case PathRole:
        return pathOf(issue, *derived);
    case SafeRole:
        return issue.safe;
    case FixableRole:
        return issue.safe && FixQueueFigures::isFixable(issue, *derived);
    default:
        return {};
    }
}

QHash<int, QByteArray> IssueModel::roleNames() const
{
    return {{KeyRole, "key"},   {TypeRole, "type"}, {TrackRole, "track"},    {LineRole, "line"},
            {PathRole, "path"}, {SafeRole, "safe"}, {FixableRole, "fixable"}};
}

void IssueModel::setIssues(std::vector<Issue> issues)
{
    m_issues = std::move(issues);
    QStringList keys;
    if (const auto derived = m_app.derived()) {
        keys.reserve(qsizetype(m_issues.size()));
        for (const Issue &issue : m_issues)
            keys.append(keyOf(issue, *derived));
    }
    setKeys(distinct(keys));
}

const Issue *IssueModel::issueOf(const QString &key) const
{
    const qsizetype place = keys().indexOf(key);
    return place < 0 ? nullptr : &m_issues[size_t(place)];
}

} // namespace tarnwick
