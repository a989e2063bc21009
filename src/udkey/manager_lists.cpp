// Selection, matching set and groups. Nothing is done before the keys are restored.
#include "toolbox/platform.h"
#include "udkey/shared.h"
#include "udkey/watchers.h"

namespace udkey = toolbox::udkey;
using udkey::ready;
using udkey::Shared;
using udkey::told;

namespace {

bool isKey(UINT id) {
    const Shared* all = ready();
    return all && all->keys.contains(id);
}

bool isKeyOrGroup(UINT id) {
    const Shared* all = ready();
    return all && (all->keys.contains(id) || all->groups.isGroup(id));
}

}  // namespace

udkey::ManagerState* UDManager::lists() const {
    const Shared* all = ready();
    return all ? &state_->of(*all) : nullptr;
}

int UDManager::addSelectionId(UINT id) {
    return told(isKey(id) && lists()->selection.add(id));
}

int UDManager::setSelection(const RWTValOrderedVector<UINT>& ids) {
    udkey::ManagerState* own = lists();
    if (!own) return 0;
    own->selection.leave();
    if (ids.isEmpty()) return 0;
    for (const UINT id : ids)
        if (!isKey(id)) return 0;
    own->selection.assign(ids);
    return told(1);
}

int UDManager::setSelection(UINT id) {
    if (udkey::ManagerState* own = lists()) own->selection.clear();
    const int added = isKey(id) && lists()->selection.add(id);
    told(1);
    return added;
}

void UDManager::resetSelection() {
    udkey::ManagerState* own = lists();
    if (!own) return;
    own->selection.clear();
    told(1);
}

int UDManager::setFirstSelection() {
    udkey::ManagerState* own = lists();
    return own && own->selection.moveToFirst();
}

int UDManager::setNextSelection() {
    udkey::ManagerState* own = lists();
    return own && own->selection.moveToNext();
}

UINT UDManager::getSelectionId() const {
    udkey::ManagerState* own = lists();
    return own ? own->selection.current().value_or(udkey::kNoId) : udkey::kNoId;
}

int UDManager::setSelectionId(UINT id) {
    udkey::ManagerState* own = lists();
    return own && own->selection.moveTo(id);
}

const RWTValOrderedVector<UINT>& UDManager::getSelection() const {
    static const RWTValOrderedVector<UINT> none;
    udkey::ManagerState* own = lists();
    return own ? own->selection.ids() : none;
}

int UDManager::setSelTokenToClip() {
    const UINT id = getSelectionId();
    if (id == udkey::kNoId) return 0;
    const RWCString token = "$" + getKey(id) + "$";
    return toolbox::platform::current().clipboard->setText(token) == 0;
}

int UDManager::setMatching(const RWTValOrderedVector<UINT>& ids) {
    udkey::ManagerState* own = lists();
    if (!own || ids.isEmpty()) return 0;
    for (const UINT id : ids) {
        if (isKeyOrGroup(id)) continue;
        resetMatching();
        return 0;
    }
    own->matching.assign(ids);
    return 1;
}

int UDManager::addMatchingId(UINT id) {
    return isKeyOrGroup(id) && lists()->matching.add(id);
}

int UDManager::removeMatchingId(UINT id) {
    udkey::ManagerState* own = lists();
    return own && own->matching.remove(id);
}

void UDManager::resetMatching() {
    if (const Shared* all = ready()) lists()->matchAll(*all);
}

int UDManager::isMatching(UINT id) const {
    const udkey::ManagerState* own = lists();
    return own && own->matching.contains(id);
}

RWTValOrderedVector<UINT> UDManager::getMatching() const {
    const Shared* all = ready();
    if (!all) return {};
    udkey::Descent keys(all->groups, false);
    for (const UINT id : lists()->matching.ids()) {
        if (all->groups.isGroup(id)) {
            keys.addBelow(id);
        } else if (all->keys.contains(id)) {
            // A group that was deleted may still be in the set: it is neither.
            keys.addLeaf(id);
        }
    }
    return keys.take();
}

void UDManager::freeMatchingKey() {
    if (udkey::ManagerState* own = lists()) own->matching.clear();
}

int UDManager::createGroup(UINT gid) {
    Shared* all = ready();
    return told(all && !all->keys.contains(gid) && all->groups.create(gid));
}

int UDManager::addIdToGroup(UINT id, UINT gid) {
    Shared* all = ready();
    if (!all || !isKeyOrGroup(id) || all->groups.isBelow(gid, id)) return 0;
    if (!all->groups.isGroup(gid) && (all->keys.contains(gid) || !all->groups.create(gid)))
        return 0;
    all->groups.append(id, gid);
    return told(1);
}

int UDManager::deleteIdFromGroup(UINT id, UINT gid) {
    Shared* all = ready();
    return told(all && all->groups.remove(id, gid));
}

int UDManager::deleteGroup(UINT gid) {
    Shared* all = ready();
    return told(all && all->groups.erase(gid));
}

int UDManager::contains(UINT gid, UINT id) const {
    const Shared* all = ready();
    return all && all->groups.contains(gid, id);
}

RWTValOrderedVector<UINT> UDManager::getChildList(UINT gid, int all) const {
    const Shared* shared = ready();
    if (!shared) return {};
    udkey::Descent below(shared->groups, all != 0);
    below.addBelow(gid);
    return below.take();
}

void UDManager::resetGroup() {
    Shared* all = ready();
    if (!all) return;
    all->groups.clear();
    told(1);
}
