// Selection, matching set and groups, each behind the test that the keys are restored.
#include "toolbox/platform.h"
#include "udkey/shared.h"

namespace udkey = toolbox::udkey;
using udkey::ready;
using udkey::Shared;

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

int UDManager::addSelectionId(UINT id) {
    return isKey(id) && state_->selection.add(id);
}

int UDManager::setSelection(const RWTValOrderedVector<UINT>& ids) {
    if (!ready()) return 0;
    state_->selection.leave();
    if (ids.isEmpty()) return 0;
    for (const UINT id : ids)
        if (!isKey(id)) return 0;
    state_->selection.assign(ids);
    return 1;
}

int UDManager::setSelection(UINT id) {
    resetSelection();
    return addSelectionId(id);
}

void UDManager::resetSelection() {
    if (ready()) state_->selection.clear();
}

int UDManager::setFirstSelection() {
    return ready() && state_->selection.moveToFirst();
}

int UDManager::setNextSelection() {
    return ready() && state_->selection.moveToNext();
}

UINT UDManager::getSelectionId() const {
    return ready() ? state_->selection.current().value_or(udkey::kNoId) : udkey::kNoId;
}

int UDManager::setSelectionId(UINT id) {
    return ready() && state_->selection.moveTo(id);
}

const RWTValOrderedVector<UINT>& UDManager::getSelection() const {
    static const RWTValOrderedVector<UINT> none;
    return ready() ? state_->selection.ids() : none;
}

int UDManager::setSelTokenToClip() {
    const UINT id = getSelectionId();
    if (id == udkey::kNoId) return 0;
    const RWCString token = "$" + getKey(id) + "$";
    return toolbox::platform::current().clipboard->setText(token) == 0;
}

int UDManager::setMatching(const RWTValOrderedVector<UINT>& ids) {
    if (!ready() || ids.isEmpty()) return 0;
    for (const UINT id : ids) {
        if (isKeyOrGroup(id)) continue;
        resetMatching();
        return 0;
    }
    state_->matching.assign(ids);
    return 1;
}

int UDManager::addMatchingId(UINT id) {
    return isKeyOrGroup(id) && state_->matching.add(id);
}

int UDManager::removeMatchingId(UINT id) {
    return ready() && state_->matching.remove(id);
}

void UDManager::resetMatching() {
    const Shared* all = ready();
    if (!all) return;
    freeMatchingKey();
    for (const udkey::KeyEntry& entry : all->keys.entries()) state_->matching.add(entry.id());
}

int UDManager::isMatching(UINT id) const {
    return ready() && state_->matching.contains(id);
}

RWTValOrderedVector<UINT> UDManager::getMatching() const {
    const Shared* all = ready();
    if (!all) return {};
    udkey::Descent keys(all->groups, false);
    for (const UINT id : state_->matching.ids()) {
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
    if (ready()) state_->matching.clear();
}

int UDManager::createGroup(UINT gid) {
    Shared* all = ready();
    return all && !all->keys.contains(gid) && all->groups.create(gid);
}

int UDManager::addIdToGroup(UINT id, UINT gid) {
    Shared* all = ready();
    if (!all || !isKeyOrGroup(id) || all->groups.isBelow(gid, id)) return 0;
    if (!all->groups.isGroup(gid) && !createGroup(gid)) return 0;
    all->groups.append(id, gid);
    return 1;
}

int UDManager::deleteIdFromGroup(UINT id, UINT gid) {
    Shared* all = ready();
    return all && all->groups.remove(id, gid);
}

int UDManager::deleteGroup(UINT gid) {
    Shared* all = ready();
    return all && all->groups.erase(gid);
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
    if (Shared* all = ready()) all->groups.clear();
}
