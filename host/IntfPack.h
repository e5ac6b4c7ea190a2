#pragma once
#include "platform/data/Connection.h"
#include "platform/schema/Step.h"

#include <QApplication>
#include <QMenu>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QToolBar>
#include <functional>

struct TKxToolBarProperties;

/// The host's package interface: the registry of plug-in libraries and the merging of their menus and tool bars.

/// How to make a package's module object.
struct PackageClass
{
    QString className;
    std::function<QObject *(QObject *owner)> create;
    /// What the module object does to the database's schema when it starts; so the host can copy the database before.
    std::function<const QList<schema::Step> &()> steps = {};
    /// What it puts into its tables in a new database, where they are empty: with the demonstration data, and as most
    /// firms have it.
    std::function<void(data::Connection &)> demoRows = {};
    std::function<void(data::Connection &)> commonRows = {};
};

template <typename Module>
PackageClass packageClass()
{
    return {QString::fromLatin1(Module::staticMetaObject.className()),
            [](QObject *owner) { return new Module(owner); }};
}

struct PackageEntry
{
    QString fileName;
    QString displayName;
    PackageClass moduleClass;
    QPointer<QObject> instance; ///< made by the host from the class; null until then and after it was destroyed
};

/// Announces a package; called by the library itself while it loads. A second call with the same file name (compared
/// without case) is ignored.
void RegisterPackage(const QString &fileName, const QString &displayName, const PackageClass &moduleClass);

/// Position of a package in the registry, or -1.
int GetPackageIndex(const QString &fileName);

/// How many packages are registered.
int GetPackageCount();
/// The entry at a position that GetPackageIndex() gave. Throws core::Error for any other.
PackageEntry &GetPackage(int index);

/// The live module object of a package. Throws core::Error when the package is unknown or has none.
QObject *GetPackageInstance(const QString &fileName);

/// Merges the children of `menu` into the host's top-level menu named `hostItem`, behind what it already holds. With
/// `createMissing` a host without that menu gets one with the caption of `menu`; otherwise the items of a missing menu
/// are left out.
void MergeAdvMenuItems(QApplication *application, const QString &hostItem, QMenu *menu, bool createMissing);

/// Takes away the merged menus and common tool bars in which no command is left, because their module went.
void RemoveEmptyMerges();

/// Merges the buttons of `toolBar` into the host's common tool bar that `properties` names.
void MergeAdvToolBarItems(QApplication *application, const TKxToolBarProperties &properties, QToolBar *toolBar);
