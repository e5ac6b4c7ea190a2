#pragma once
#include <QStringList>

#include <functional>

/// Works that a power failure may cut at any moment; what is cut is a process of its own.
namespace kills {

struct Workload
{
    QString name;
    /// Lays down in an empty folder what the work starts from; done once, in a process of its own, and then copied.
    std::function<void(const QString &folder)> prepare;
    /// The program and arguments that work in the folder. It is cut, and then run again undisturbed: that run must end
    /// by itself with exit code 0.
    std::function<QStringList(const QString &folder)> command = {};
    /// Or a routine that does so, in a process of its own; what it throws is a failure.
    std::function<void(const QString &folder)> run = {};
    /// What is wrong after the second run; empty when all is as if nothing had been cut. In a process of its own, too.
    std::function<QStringList(const QString &folder)> problems;
    /// Names of the files that may be in the folder afterwards, hidden ones included; "*" stands for any characters.
    QStringList files;
};

/// Every work, in the order in which it is run without arguments.
const QList<Workload> &workloads();
/// Those among them that work on files beside the database: import, backup, restore.
QList<Workload> fileWorkloads();

/// This program with arguments that make it run `work` of the named workload (see main()): for works that are routines.
QStringList ownCommand(const QString &work, const QString &workload, const QString &folder);

} // namespace kills
