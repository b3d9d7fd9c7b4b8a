#!/usr/bin/python3
"""A user dictionary in mozc: Debian's server, spoken to as its dictionary tool and its clients do.

usage: mozc.py FOLDER LETTERS=SYMBOL... < DICTIONARY
Writes how the dictionary was taken and how many entries of it are stored, and fails unless each
symbol is offered for the letters.

Messages are protocol buffers, of which a few fields are put together and taken apart here, by
the numbers of mozc's protocol/commands.proto, candidates.proto and user_dictionary_storage.proto.
"""

import os
import pathlib
import socket
import subprocess
import sys
import time

SERVER = "/usr/lib/mozc/mozc_server"
PATIENCE = 30  # seconds
CREATE_SESSION, SEND_KEY, RELOAD, USER_DICTIONARY = 1, 3, 10, 26
OPEN_STORAGE, LOAD, SAVE, IMPORT, GET_STORAGE = 2, 7, 8, 20, 21
ON, SPACE = 2, 4
STATUS = {1: "taken", 25: "invalid comment", 26: "too many words", 27: "invalid entries"}


def varint(number):
    return bytes([number]) if number < 0x80 else bytes([number & 0x7F | 0x80]) + varint(number >> 7)


def message(fields):
    """@param fields  by their numbers: a number, text, or the fields of a message"""
    data = b""
    for number, value in fields.items():
        if isinstance(value, int):
            data += varint(number << 3) + varint(value)
        else:
            content = message(value) if isinstance(value, dict) else value.encode()
            data += varint(number << 3 | 2) + varint(len(content)) + content
    return data


def fields_of(data):
    """Lists of numbers and bytes by the numbers of the fields; groups, which mozc has, as messages."""

    def number(place):
        value = shift = 0
        while True:
            byte = data[place]
            value |= (byte & 0x7F) << shift
            place, shift = place + 1, shift + 7
            if byte < 0x80:
                return value, place

    def read(place, end_of_group=None):
        fields = {}
        while place < len(data):
            tag, place = number(place)
            field, kind = tag >> 3, tag & 7
            if kind == 4:
                assert field == end_of_group
                break
            if kind == 0:
                value, place = number(place)
            elif kind == 3:
                value, place = read(place, field)
            else:
                length, place = (8 if kind == 1 else 4, place) if kind in (1, 5) else number(place)
                value, place = data[place : place + length], place + length
            fields.setdefault(field, []).append(value)
        return fields, place

    return read(0)[0]


class Mozc:
    """@param folder  for its files. For root it does nothing."""

    def __init__(self, folder):
        (folder / ".config").mkdir()
        self.process = subprocess.Popen([SERVER], env=os.environ | {"HOME": str(folder)})
        told = folder / ".config/mozc/.session.ipc"
        self.wait("it does not start", lambda: told.exists() and told.read_bytes())
        self.address = f"\0tmp/.mozc.{fields_of(told.read_bytes())[1][0].decode()}.session"
        self.storage = self.dictionary({1: OPEN_STORAGE})[2][0]

    def wait(self, otherwise, until):
        end = time.time() + PATIENCE
        while not (found := until()):
            assert time.time() < end and self.process.poll() is None, otherwise
            time.sleep(0.02)
        return found

    def call(self, fields):
        """One command. @return the fields of its output"""
        with socket.socket(socket.AF_UNIX) as server:
            server.settimeout(PATIENCE)
            server.connect(self.address)
            server.sendall(message(fields))
            server.shutdown(socket.SHUT_WR)
            answer = b"".join(iter(lambda: server.recv(65536), b""))
        return fields_of(answer)

    def dictionary(self, fields):
        return fields_of(self.call({1: USER_DICTIONARY, 13: fields})[21][0])

    def take(self, text):
        """Imports the text form of a dictionary. @return what mozc says, and how many entries it has"""
        told = self.dictionary({1: IMPORT, 2: self.storage, 4: "kigou", 7: text, 9: 1})
        saved = self.dictionary({1: SAVE, 2: self.storage})
        assert saved[1] == [1], saved
        self.call({1: RELOAD})
        stored = fields_of(self.dictionary({1: GET_STORAGE, 2: self.storage})[3][0])
        entries = sum(len(fields_of(one).get(4, [])) for one in stored.get(2, []))
        return STATUS.get(told[1][0], told[1][0]), entries

    def offered(self, typed):
        session = self.call({1: CREATE_SESSION})[1][0]
        for key in ({3: ON}, *({1: ord(letter)} for letter in typed), {3: SPACE}, {3: SPACE}):
            output = self.call({1: SEND_KEY, 2: session, 3: key})
        candidates = fields_of(output.get(14, [b""])[0]).get(2, [])
        return [fields_of(candidate)[4][0].decode() for candidate in candidates]


if __name__ == "__main__":
    mozc = Mozc(pathlib.Path(sys.argv[1]))
    try:
        status, entries = mozc.take(sys.stdin.read())
        for letters, symbol in (row.split("=") for row in sys.argv[2:]):
            # It reads them anew beside its work.
            mozc.wait(f"{symbol} is not offered for {letters}", lambda: symbol in mozc.offered(letters))
        print(status, entries)
    finally:
        mozc.process.kill()
        mozc.process.wait()
