#pragma once

/// All that a program needs that carries the budget object: the object and the table of its members, record sets and
/// connections, the session and the services of the suite, the providers.
#include "ado/connection/ConnectionString.h"
#include "bukorval/Providers.h"
#include "object/CLSKORVAL.h"
#include "object/Interfaccia.h"
#include "suite/Aritmetica.h"
#include "suite/DateTesto.h"
#include "suite/Esercizi.h"
#include "suite/SituazioneMovimenti.h"
#include "suite/Suite.h"
#include "values/Conversion.h"
