// MAPIFolder, Folders, Items, Views and View.
#include "base/runtime_error.h"
#include "tests/host/host_objects.h"

namespace host {
namespace {

using Args = com::DispatchArgs;
using V = com::ScopedVariant;

const MemberTable<client::View> kView = {
    {"Name", [](client::View& v, const Args&) { return V(v.Name()); }},
    {"XML", [](client::View& v, const Args&) { return V(v.XML()); },
     [](client::View& v, const Args&, const V& value) { v.XML(value.ToText()); }},
    {"Save", [](client::View& v, const Args&) { return v.Save(), NoValue(); }},
    {"Apply", [](client::View& v, const Args&) { return v.Apply(), NoValue(); }},
};

const MemberTable<client::Views> kViews = {
    {"Count", [](client::Views& v, const Args&) { return V(v.Count()); }},
    {"Item", [](client::Views& v, const Args& a) { return Expose(v.Item(a.Text(0)), kView); }},
    {"Add", [](client::Views& v, const Args& a) {
       return Expose(v.Add(a.Text(0), a.Has(1) ? a.Long(1) : client::olTableView,
                           a.Has(2) ? a.Long(2) : client::olViewSaveOptionThisFolderEveryone),
                     kView);
     }},
};

const MemberTable<client::Items> kItems = {
    {"Count", [](client::Items& i, const Args&) { return V(i.Count()); }},
    {"Item", [](client::Items& i, const Args& a) { return ExposeItem(i.Item(a.Long(0))); }},
    {"Restrict", [](client::Items& i, const Args& a) { return ExposeItems(i.Restrict(a.Text(0))); }},
    {"Find", [](client::Items& i, const Args& a) { return ExposeItem(i.Find(a.Text(0))); }},
    {"FindNext", [](client::Items& i, const Args&) { return ExposeItem(i.FindNext()); }},
    {"Sort", [](client::Items& i, const Args& a) { return i.Sort(a.Text(0), a.Has(1) && a.Bool(1)), NoValue(); }},
    {"IncludeRecurrences", [](client::Items& i, const Args&) { return V(i.IncludeRecurrences()); },
     [](client::Items& i, const Args&, const V& value) { i.IncludeRecurrences(value.ToBool()); }},
};

const MemberTable<client::Folders> kFolders = {
    {"Count", [](client::Folders& f, const Args&) { return V(f.Count()); }},
    {"Item", [](client::Folders& f, const Args& a) { return ExposeFolder(f.Item(a.Long(0))); }},
    {"Add", [](client::Folders& f, const Args& a) {
       return ExposeFolder(f.Add(a.Text(0), a.Has(1) ? a.Long(1) : client::olFolderInbox));
     }},
};

const MemberTable<client::UserDefinedProperty> kField = {
    {"Name", [](client::UserDefinedProperty& f, const Args&) { return V(f.Name()); }},
    {"Type", [](client::UserDefinedProperty& f, const Args&) { return V(f.Type()); }},
    {"Delete", [](client::UserDefinedProperty& f, const Args&) { return f.Delete(), NoValue(); }},
};

// Add(Name, Type, DisplayFormat, Formula): the last two are not kept here.
const MemberTable<client::UserDefinedProperties> kFields = {
    {"Count", [](client::UserDefinedProperties& f, const Args&) { return V(f.Count()); }},
    {"Item", [](client::UserDefinedProperties& f, const Args& a) { return Expose(f.Item(a.Long(0)), kField); }},
    {"Find", [](client::UserDefinedProperties& f, const Args& a) { return Expose(f.Find(a.Text(0)), kField); }},
    {"Add", [](client::UserDefinedProperties& f, const Args& a) {
       return Expose(f.Add(a.Text(0), a.Has(1) ? a.Long(1) : client::olText), kField);
     }},
};

const MemberTable<client::MAPIFolder> kFolder = {
    {"Class", [](client::MAPIFolder& f, const Args&) { return V(f.Class()); }},
    {"Name", [](client::MAPIFolder& f, const Args&) { return V(f.Name()); }},
    {"EntryID", [](client::MAPIFolder& f, const Args&) { return V(f.EntryID()); }},
    {"FolderPath", [](client::MAPIFolder& f, const Args&) { return V(f.FolderPath()); }},
    {"DefaultItemType", [](client::MAPIFolder& f, const Args&) { return V(f.DefaultItemType()); }},
    {"Parent", [](client::MAPIFolder& f, const Args&) {
       // The store root's parent is the session, as in the client.
       const auto parent = f.Parent();
       return parent ? ExposeFolder(parent) : ExposeNameSpace(HostedApplication()->Session());
     }},
    {"Folders", [](client::MAPIFolder& f, const Args&) { return ExposeFolders(f.Folders()); }},
    {"Items", [](client::MAPIFolder& f, const Args&) { return ExposeItems(f.Items()); }},
    {"Views", [](client::MAPIFolder& f, const Args&) { return ExposeViews(f.Views()); }},
    {"UserDefinedProperties",
     [](client::MAPIFolder& f, const Args&) { return Expose(f.UserDefinedProperties(), kFields); }},
};

}  // namespace

com::ScopedVariant ExposeFolder(const Ref<client::MAPIFolder>& folder) { return Expose(folder, kFolder); }
com::ScopedVariant ExposeFolders(const Ref<client::Folders>& folders) { return Expose(folders, kFolders); }
com::ScopedVariant ExposeItems(const Ref<client::Items>& items) { return Expose(items, kItems); }
com::ScopedVariant ExposeViews(const Ref<client::Views>& views) { return Expose(views, kViews); }

}  // namespace host
