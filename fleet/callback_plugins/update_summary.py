"""Counts the machines by outcome at the end of a run, even if the run stops early."""
import collections

from ansible.plugins.callback import CallbackBase

OUTCOMES = "installed", "to be changed", "already equal", "failed", "unreachable", "not started"


class CallbackModule(CallbackBase):
    CALLBACK_VERSION = 2.0
    CALLBACK_TYPE = "aggregate"
    CALLBACK_NAME = "update_summary"

    def __init__(self):
        super().__init__()
        self._outcomes = {}

    def v2_playbook_on_play_start(self, play):
        for host in play.get_variable_manager().get_vars(play=play)["ansible_play_hosts_all"]:
            self._outcomes.setdefault(host, ("not started", ""))

    def v2_runner_on_ok(self, result):
        if result._task.action == "install_update":
            found = result._result
            waiting = "to be changed" if found["differing"] else "already equal"
            self._note(result, "installed" if found["changed"] else waiting)

    def v2_runner_on_failed(self, result, ignore_errors=False):
        items = [item for item in result._result.get("results", []) if item.get("failed")]
        reasons = [str(item.get("msg", "")).partition("\n")[0] for item in items or [result._result]]
        self._note(result, "failed", "; ".join(reasons))

    def v2_runner_on_unreachable(self, result):
        self._note(result, "unreachable")

    def v2_playbook_on_stats(self, stats):
        machines = collections.defaultdict(list)
        for host, outcome in self._outcomes.items():
            machines[outcome].append(host)
        self._display.banner("UPDATE SUMMARY")
        for (outcome, reason), hosts in sorted(machines.items(), key=lambda each: OUTCOMES.index(each[0][0])):
            self._display.display(f"{outcome}: {len(hosts)}{reason and f' ({reason})'}: {some(hosts)}")

    def _note(self, result, outcome, reason=""):
        self._outcomes[result._host.get_name()] = (outcome, reason)


def some(names):
    return ", ".join(names[:20]) + (", …" if len(names) > 20 else "")
