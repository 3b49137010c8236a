#pragma once

namespace pagora {

// Tells whether a request comes from the page itself or from the user's key press or click.
enum class RequestedBy : bool { Page, User };

}
