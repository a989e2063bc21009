"""Loads a script of this repository, which has no suffix, as a module."""
import importlib.machinery
import importlib.util
import pathlib
import sys


def load(name):
    script = pathlib.Path(__file__).resolve().parents[2] / "scripts" / name
    loader = importlib.machinery.SourceFileLoader(name.replace("-", "_"), str(script))
    sys.dont_write_bytecode = True
    module = importlib.util.module_from_spec(
        importlib.util.spec_from_loader(loader.name, loader))
    loader.exec_module(module)
    return module
