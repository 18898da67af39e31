#!/usr/bin/python3
"""A session manager of the X session protocol for one client, over the system's own library.

It prints its address as one line, for SESSION_MANAGER, and after that one line of JSON for each thing that happens:
{"registered": ID} and {"properties": {NAME: [VALUES]}}. It ends when its standard input does.
"""
import ctypes as c
import json
import select
import sys

ICE, SM = c.CDLL("libICE.so.6"), c.CDLL("libSM.so.6")
MESSAGE = 256
Pointer = c.c_void_p
ICE.IceAcceptConnection.restype = Pointer
ICE.IceComposeNetworkIdList.restype = Pointer
SM.SmsGenerateClientID.restype = Pointer


class Value(c.Structure):
    _fields_ = [("length", c.c_int), ("value", Pointer)]


class Property(c.Structure):
    _fields_ = [("name", c.c_char_p), ("type", c.c_char_p), ("count", c.c_int), ("values", c.POINTER(Value))]


Register = c.CFUNCTYPE(c.c_int, Pointer, Pointer, Pointer)
SetProperties = c.CFUNCTYPE(None, Pointer, Pointer, c.c_int, c.POINTER(c.POINTER(Property)))
Plain = c.CFUNCTYPE(None, Pointer, Pointer, Pointer, Pointer, Pointer)
Broken = c.CFUNCTYPE(None, Pointer)
HostBased = c.CFUNCTYPE(c.c_int, c.c_char_p)


class Callbacks(c.Structure):
    """Each with its data, in the order of the library's header."""
    _fields_ = [(name, Pointer) for each in
                ("register", "interact", "interact_done", "save", "save2", "saved", "close", "set", "delete", "get")
                for name in (each, each + "_data")]


NewClient = c.CFUNCTYPE(c.c_int, Pointer, Pointer, c.POINTER(c.c_ulong), c.POINTER(Callbacks), c.POINTER(c.c_char_p))


def say(**what):
    print(json.dumps(what), flush=True)


@Register
def register(client, _data, previous):
    name = previous or SM.SmsGenerateClientID(Pointer(client))
    SM.SmsRegisterClientReply(Pointer(client), Pointer(name))
    say(registered=c.string_at(name).decode())
    # Asks for what there is to know of it, of the client alone and without any question to the user.
    SM.SmsSaveYourself(Pointer(client), 1, 0, 0, 0)
    return 1


@SetProperties
def set_properties(_client, _data, count, properties):
    told = {}
    for index in range(count):
        one = properties[index].contents
        told[one.name.decode()] = [c.string_at(one.values[i].value, one.values[i].length).decode("latin-1")
                                   for i in range(one.count)]
    say(properties=told)


@Plain
def saved(client, *_rest):
    SM.SmsSaveComplete(Pointer(client))


@Plain
def ignore(*_rest):
    pass


@HostBased
def let_in(_host):
    return 1


@Broken
def broken(_connection):
    """A client has gone; the library's own answer would be to end this process."""


@NewClient
def new_client(_client, _data, mask, callbacks, _reason):
    mask[0] = 0x3FF
    for name, _ in Callbacks._fields_:
        if not name.endswith("_data"):
            setattr(callbacks[0], name, c.cast(ignore, Pointer))
    callbacks[0].register = c.cast(register, Pointer)
    callbacks[0].set = c.cast(set_properties, Pointer)
    callbacks[0].saved = c.cast(saved, Pointer)
    return 1


def main():
    message = c.create_string_buffer(MESSAGE)
    ICE.IceSetIOErrorHandler(broken)
    if not SM.SmsInitialize(b"test", b"1", new_client, None, let_in, MESSAGE, message):
        sys.exit(message.value.decode())
    count, listening = c.c_int(), c.POINTER(Pointer)()
    if not ICE.IceListenForConnections(c.byref(count), c.byref(listening), MESSAGE, message):
        sys.exit(message.value.decode())
    for index in range(count.value):
        ICE.IceSetHostBasedAuthProc(Pointer(listening[index]), let_in)
    print(c.string_at(ICE.IceComposeNetworkIdList(count, listening)).decode(), flush=True)
    doors = {ICE.IceGetListenConnectionNumber(Pointer(listening[index])): listening[index]
             for index in range(count.value)}
    clients = {}
    while True:
        for ready in select.select([sys.stdin, *doors, *clients], [], [])[0]:
            if ready is sys.stdin:
                return
            if ready in doors:
                status = c.c_int()
                client = ICE.IceAcceptConnection(Pointer(doors[ready]), c.byref(status))
                if client:
                    clients[ICE.IceConnectionNumber(Pointer(client))] = client
            elif ICE.IceProcessMessages(Pointer(clients[ready]), None, None) == 1:
                ICE.IceCloseConnection(Pointer(clients.pop(ready)))


main()
